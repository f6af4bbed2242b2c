#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"

#include <QComboBox>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

namespace {

constexpr quint64 FIRST_VALUE = 0x1000; // then four bytes each

QByteArray intReg(const QByteArray &name, quint64 address)
{
    return "<IntReg Name='" + name + "'><Address>" + QByteArray::number(address)
        + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
          "<Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

/// Features "Feature0000" and so on, each over a register of its own.
QByteArray manyFeatures(int count, QStringList &names)
{
    QByteArray elements;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i).rightJustified(4, '0');
        names.append("Feature" + number);
        elements += "<Integer Name='Feature" + number + "'><pValue>Reg" + number
            + "</pValue></Integer>" + intReg("Reg" + number, FIRST_VALUE + 4 * quint64(i));
    }
    return elements;
}

struct Opened : ModuleFixture
{
    explicit Opened(const QByteArray &xml)
        : camera(openDescription(xml))
        , control(*camera.device.control)
        , tree(*camera.tree)
    {
        waitForFirstUpdate(camera);
        control.setLogging(true);
        control.clearAccessLog();
    }
    void poke(quint64 address, char value) const
    {
        control.poke(address, QByteArray(1, value) + QByteArray(3, '\0'));
    }
    qint64 shown(const QString &name) const
    {
        return tree.propertyItemByName(name)->valueSnapshot()->value().toLongLong();
    }
    int readsOf(quint64 address) const
    {
        const QVector<SimulatorAccess> log = control.accessLog();
        return int(
            std::count_if(log.cbegin(), log.cend(), [address](const SimulatorAccess &access) {
                return access.address == address;
            }));
    }
    const Camera camera;
    SimulatorControl &control;
    VexaFeatureTree &tree;
};

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
    void levelChangeShowsExactlyTheRows();
    void lockedNodesFollowGrabbing();
    void changedNodesAreReadAfterTheBurst();
    void pollingReadsItsTableOnly();
};

void tst_updateworkers::firstUpdateIsToldOnce()
{
    ModuleFixture fixture;
    QSignalSpy bus(QVexaEventBus::Instance(),
                   &QVexaEventBus::SigVexaEventFirstUpdateFeatureTreeEnd);
    const ModuleFixture::Camera camera = fixture.open(SimulatedDevices::builtIn("area-camera"));
    QSignalSpy first(camera.tree, &VexaFeatureTree::SigFirstEndUpdateFeature);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    QSignalSpy ended(camera.tree->findChildren<QGetFeaturesThread *>().value(2),
                     &QGetFeaturesThread::sigThreadEnd);
    camera.tree->RefreshFeatures();
    QTRY_VERIFY(!ended.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(first.count(), 1);
    QCOMPARE(bus.count(), 1);
    QCOMPARE(bus.first().first().value<long>(), camera.id);
}

void tst_updateworkers::levelChangeShowsExactlyTheRows()
{
    ModuleFixture fixture;
    QLocalCfg::Instance()->SetUserLevel(2);
    // The leaf's name sorts ahead of its category's, so that the pass reaches it first.
    QStringList names;
    const QByteArray elements =
        manyFeatures(4, names) + R"(<Category Name="Zoom"><Visibility>Expert</Visibility>
<pFeature>AGuru</pFeature><pFeature>ABeginner</pFeature></Category>
<Integer Name="AGuru"><Visibility>Guru</Visibility><pValue>Reg0001</pValue></Integer>
<Integer Name="ABeginner"><pValue>Reg0002</pValue></Integer>)";
    const ModuleFixture::Camera camera =
        fixture.openDescription(descriptionOf({"Zoom", "Feature0000"}, elements));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const QStringList beginner{"Feature0000"};
    QCOMPARE(shownRows(camera.tree->rootItem()), beginner);
    auto *combo = camera.tree->findChild<QComboBox *>();
    combo->setCurrentIndex(0);
    QTRY_COMPARE(shownRows(camera.tree->rootItem()),
                 QStringList({"Zoom", "AGuru", "ABeginner", "Feature0000"}));
    combo->setCurrentIndex(2);
    QTRY_COMPARE(shownRows(camera.tree->rootItem()), beginner);
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 2);
}

void tst_updateworkers::lockedNodesFollowGrabbing()
{
    ModuleFixture fixture;
    QLocalCfg::Instance()->SetUserLevel(0);
    const ModuleFixture::Camera camera = fixture.open(SimulatedDevices::builtIn("area-camera"));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const VexaPropertyTreeItem *width = camera.tree->propertyItemByName("Width");
    QVERIFY(width && !width->readOnly());
    QVERIFY(fixture.host().startGrabbing(camera.id));
    camera.tree->OnCameraStartShot();
    QTRY_VERIFY(width->readOnly());
    QVERIFY(fixture.host().stopGrabbing(camera.id));
    camera.tree->OnCameraStopShot();
    QTRY_VERIFY(!width->readOnly());
}

void tst_updateworkers::changedNodesAreReadAfterTheBurst()
{
    QStringList names;
    const QByteArray elements = manyFeatures(50, names);
    const Opened f(descriptionOf(names, elements));
    f.poke(FIRST_VALUE, 42);
    f.poke(FIRST_VALUE + 4, 43);
    f.tree.OnAddValueChangedNodes({names.at(0)});
    emit QVexaEventBus::Instance()->SigVexaEventUpdateFeatureTree2(f.camera.id,
                                                                   {names.at(1), "Unknown"});
    QTRY_COMPARE(f.shown(names.at(0)), 42LL);
    QTRY_COMPARE(f.shown(names.at(1)), 43LL);
    for (const SimulatorAccess &access : f.control.accessLog()) {
        QVERIFY2(access.address < FIRST_VALUE + 8, "a node that did not change was read");
    }
}

void tst_updateworkers::pollingReadsItsTableOnly()
{
    QStringList names;
    QByteArray elements = manyFeatures(20, names);
    elements.replace("'Reg0007'>", "'Reg0007'><PollingTime>100</PollingTime>");
    const Opened f(descriptionOf(names, elements));
    f.poke(FIRST_VALUE + 4 * 7, 7);
    QTRY_COMPARE(f.shown(names.at(7)), 7LL);
    QCOMPARE(f.readsOf(FIRST_VALUE + 4 * 7), f.control.accessLog().size());
}

QTEST_MAIN(tst_updateworkers)
#include "tst_updateworkers.moc"
