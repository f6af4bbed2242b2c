#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/IVexaFeatureNotify.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"

#include <QComboBox>
#include <QSignalSpy>
#include <QtTest>

namespace {

/// Counts what items tell; items call it on workers.
class CountingView : public IVexaFeatureNotify
{
public:
    void itemDataChanged(long, VexaPropertyTreeItem *, int, bool, bool) override { ++m_nData; }
    void itemVisibleChanged(long, VexaPropertyTreeItem *, bool) override { ++m_nVisible; }
    void itemReadOnlyChanged(long, VexaPropertyTreeItem *, bool) override { ++m_nReadOnly; }
    int sum() const { return m_nData + m_nVisible + m_nReadOnly; }

private:
    std::atomic<int> m_nData{0};
    std::atomic<int> m_nVisible{0};
    std::atomic<int> m_nReadOnly{0};
};

QByteArray manyFeatures(int count, QStringList &names)
{
    QByteArray elements;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i).rightJustified(4, '0');
        names.append(QStringLiteral("Feature") + QString::fromLatin1(number));
        elements += "<Integer Name=\"Feature" + number + "\"><pValue>Reg" + number
            + "</pValue></Integer><IntReg Name=\"Reg" + number + "\"><Address>"
            + QByteArray::number(0x1000 + 4 * i)
            + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</"
              "pPort><Sign>Signed</Sign>"
              "<Endianess>LittleEndian</Endianess></IntReg>\n";
    }
    return elements;
}

QStringList shownRows(VexaPropertyTreeItem *item)
{
    QStringList rows;
    for (int row = 0; row < item->childCount(); ++row) {
        if (item->child(row)->visible()) {
            rows.append(item->child(row)->value()->m_strNodeName);
            rows += shownRows(item->child(row));
        }
    }
    return rows;
}

} // namespace

class tst_updateworkers : public QObject
{
    Q_OBJECT
private slots:
    void firstUpdateIsToldOnce();
    void quietDeviceTellsNobody();
    void levelChangeShowsExactlyTheRows();
    void lockedNodesFollowGrabbing();
    void changedNodesAreReadAfterTheBurst();
    void pollingReadsItsTableOnly();
    void secondFullUpdateIsRefused();
};

void tst_updateworkers::firstUpdateIsToldOnce()
{
    ModuleFixture fixture;
    QSignalSpy bus(QVexaEventBus::Instance(),
                   &QVexaEventBus::SigVexaEventFirstUpdateFeatureTreeEnd);
    const ModuleFixture::Camera camera =
        fixture.open(SimulatedDevices::builtIn(QStringLiteral("area-camera")));
    QSignalSpy first(camera.tree, &VexaFeatureTree::SigFirstEndUpdateFeature);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    auto *worker = camera.tree->findChildren<QGetFeaturesThread *>().value(0);
    QVERIFY(worker);
    QSignalSpy ended(camera.tree->findChildren<QGetFeaturesThread *>().value(2),
                     &QGetFeaturesThread::sigThreadEnd);
    camera.tree->RefreshFeatures();
    QTRY_VERIFY(!ended.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(first.count(), 1);
    QCOMPARE(bus.count(), 1);
    QCOMPARE(bus.first().first().value<long>(), camera.id);
    fixture.close(camera);
}

void tst_updateworkers::quietDeviceTellsNobody()
{
    ModuleFixture fixture;
    QStringList names;
    const QByteArray elements = manyFeatures(200, names);
    const ModuleFixture::Camera camera = fixture.openDescription(descriptionOf(names, elements));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    // Every editor takes over what the first pass brought.
    camera.tree->notifyEditorUpdate();
    const QMap<QString, VexaPropertyTreeItem *> items = camera.tree->AllTreeItemsMap();
    QTRY_VERIFY(std::all_of(items.cbegin(), items.cend(), [](VexaPropertyTreeItem *item) {
        item->updateLock();
        const bool caughtUp = item->value()->m_strCurrentStatus
            == item->value()->createCurrentStauts(item->readOnly());
        item->updateUnlock();
        return caughtUp;
    }));
    CountingView view;
    for (VexaPropertyTreeItem *item : items) {
        item->registerView(&view);
    }
    for (VexaPropertyTreeItem *item : items) {
        camera.tree->updateFeature(item, QGetFeaturesThread::UPDATE_EVERYTHING);
    }
    QCOMPARE(view.sum(), 0);
    for (VexaPropertyTreeItem *item : items) {
        item->removeView(&view);
    }
    fixture.close(camera);
}

void tst_updateworkers::levelChangeShowsExactlyTheRows()
{
    ModuleFixture fixture;
    QLocalCfg::Instance()->SetUserLevel(2);
    // The leaf's name sorts ahead of its category's, so that the pass reaches it first.
    QStringList names;
    const QByteArray elements = manyFeatures(4, names);
    const QByteArray xml = descriptionOf(
        {QStringLiteral("Zoom"), QStringLiteral("Feature0000")},
        "<Category "
        "Name=\"Zoom\"><Visibility>Expert</Visibility><pFeature>AGuru</"
        "pFeature><pFeature>ABeginner</pFeature>"
        "</Category>"
        "<Integer Name=\"AGuru\"><Visibility>Guru</Visibility><pValue>Reg0001</pValue></Integer>"
        "<Integer Name=\"ABeginner\"><pValue>Reg0002</pValue></Integer>"
            + elements);
    const ModuleFixture::Camera camera = fixture.openDescription(xml);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const QStringList beginner{QStringLiteral("Feature0000")};
    QCOMPARE(shownRows(camera.tree->rootItem()), beginner);

    auto *combo = camera.tree->findChild<QComboBox *>();
    QVERIFY(combo);
    combo->setCurrentIndex(0);
    const QStringList guru{QStringLiteral("Zoom"), QStringLiteral("AGuru"),
                           QStringLiteral("ABeginner"), QStringLiteral("Feature0000")};
    QTRY_COMPARE(shownRows(camera.tree->rootItem()), guru);
    combo->setCurrentIndex(2);
    QTRY_COMPARE(shownRows(camera.tree->rootItem()), beginner);
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 2);
    fixture.close(camera);
}

void tst_updateworkers::lockedNodesFollowGrabbing()
{
    ModuleFixture fixture;
    QLocalCfg::Instance()->SetUserLevel(0);
    const ModuleFixture::Camera camera =
        fixture.open(SimulatedDevices::builtIn(QStringLiteral("area-camera")));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    VexaPropertyTreeItem *width = camera.tree->propertyItemByName(QStringLiteral("Width"));
    QVERIFY(width && !width->readOnly());
    QVERIFY(fixture.host().startGrabbing(camera.id));
    camera.tree->OnCameraStartShot();
    QTRY_VERIFY(width->readOnly());
    QVERIFY(fixture.host().stopGrabbing(camera.id));
    camera.tree->OnCameraStopShot();
    QTRY_VERIFY(!width->readOnly());
    fixture.close(camera);
}

void tst_updateworkers::changedNodesAreReadAfterTheBurst()
{
    ModuleFixture fixture;
    QStringList names;
    const QByteArray elements = manyFeatures(50, names);
    const ModuleFixture::Camera camera = fixture.openDescription(descriptionOf(names, elements));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    camera.device.control->poke(0x1000, QByteArray("\x2a\0\0\0", 4));
    camera.device.control->poke(0x1004, QByteArray("\x2b\0\0\0", 4));
    camera.device.control->setLogging(true);
    camera.device.control->clearAccessLog();
    camera.tree->OnAddValueChangedNodes({names.at(0)});
    emit QVexaEventBus::Instance()->SigVexaEventUpdateFeatureTree2(
        camera.id, {names.at(1), QStringLiteral("Unknown")});
    const auto value = [&](int index) {
        return camera.tree->propertyItemByName(names.at(index))
            ->valueSnapshot()
            ->value()
            .toLongLong();
    };
    QTRY_COMPARE(value(0), 42LL);
    QTRY_COMPARE(value(1), 43LL);
    for (const SimulatorAccess &access : camera.device.control->accessLog()) {
        QVERIFY2(access.address < 0x1008, "a node that did not change was read");
    }
    fixture.close(camera);
}

void tst_updateworkers::pollingReadsItsTableOnly()
{
    ModuleFixture fixture;
    QStringList names;
    QByteArray elements = manyFeatures(20, names);
    elements.replace("<IntReg Name=\"Reg0007\">",
                     "<IntReg Name=\"Reg0007\"><PollingTime>100</PollingTime>");
    const ModuleFixture::Camera camera = fixture.openDescription(descriptionOf(names, elements));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    camera.device.control->poke(0x1000 + 4 * 7, QByteArray("\x07\0\0\0", 4));
    camera.device.control->setLogging(true);
    camera.device.control->clearAccessLog();
    QTRY_COMPARE(
        camera.tree->propertyItemByName(names.at(7))->valueSnapshot()->value().toLongLong(), 7LL);
    for (const SimulatorAccess &access : camera.device.control->accessLog()) {
        QCOMPARE(access.address, quint64(0x1000 + 4 * 7));
    }
    fixture.close(camera);
}

void tst_updateworkers::secondFullUpdateIsRefused()
{
    ModuleFixture fixture;
    QStringList names;
    const QByteArray elements = manyFeatures(100, names);
    auto device =
        SimulatedDevices::fromDescription(descriptionOf(names, elements), QStringLiteral("slow"),
                                          SimulatorControl::MemoryPattern::Zero);
    device.control->setLogging(true);
    const ModuleFixture::Camera camera = fixture.open(device);
    camera.tree->RefreshFeatures();
    camera.tree->RefreshFeatures();
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    QCoreApplication::processEvents();
    int reads = 0;
    for (const SimulatorAccess &access : device.control->accessLog()) {
        reads += access.address == 0x1000 + 4 * 99 ? 1 : 0;
    }
    QVERIFY2(reads >= 1 && reads <= 2, qPrintable(QString::number(reads)));
    fixture.close(camera);
}

QTEST_MAIN(tst_updateworkers)
#include "tst_updateworkers.moc"
