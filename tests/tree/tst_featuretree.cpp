#include "ControlKit/CustomLoadingDialog.h"
#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTextEdit>
#include <QTreeView>
#include <QtTest>

namespace {

SimulatedDevices::Simulated areaCamera()
{
    return SimulatedDevices::builtIn(QStringLiteral("area-camera"));
}

class RecordingObserver : public VexaFeatureObserverable
{
public:
    void notifyFeatureChanged(const QString &, bool) override { }
    void notifyFeatureTreeReleased(long int cameraId) override { m_released.append(cameraId); }
    QList<long int> m_released;
};

} // namespace

class tst_featuretree : public QObject
{
    Q_OBJECT
private slots:
    void secondOpenChangesNothing();
    void openWithoutTaskStaysEmpty();
    void readOnlyAccessClearsCaches();
    void closeLeavesAnEmptyTree();
    void restartBuildsAnew();
    void closeDuringUpdateReturnsAtOnce();
    void closeOnASlowDeviceWaitsForOneAccess();
    void vanishedDeviceWhileUpdating();
    void messageAfterReadyForDelete();
    void oneBoxATree();
    void removedWhileABoxIsOpen();
    void removedByItsOwnSignal();
    void releaseTwice();
    void observersHearTheOpenedCamera();
    void refreshNodeEvent();
    void languageChange();
    void openAndCloseManyTimes();
};

void tst_featuretree::secondOpenChangesNothing()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    const QMap<QString, VexaPropertyTreeItem *> items = camera.tree->AllTreeItemsMap();
    camera.tree->OnCameraOpen(4);
    QCOMPARE(camera.tree->AllTreeItemsMap(), items);
    QVERIFY(items.size() >= 180);
    fixture.close(camera);
}

void tst_featuretree::openWithoutTaskStaysEmpty()
{
    ModuleFixture fixture;
    const auto device = areaCamera();
    const long int id = fixture.host().openCamera(*device.source).cameraId;
    VexaFeatureTree *tree = fixture.mainWidget().featureTree(id, true);
    fixture.host().closeCamera(id);
    tree->OnCameraOpen(4);
    QVERIFY(tree->AllTreeItemsMap().isEmpty());
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    fixture.mainWidget().removeFeatureTree(id);
}

void tst_featuretree::readOnlyAccessClearsCaches()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera(), 2);
    QVERIFY(!camera.tree->isCanEdit());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    fixture.close(camera);
}

void tst_featuretree::closeLeavesAnEmptyTree()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    camera.tree->OnCameraClose();
    QCOMPARE(camera.tree->GetCurCameraID(), -1L);
    QVERIFY(camera.tree->AllTreeItemsMap().isEmpty());
    QVERIFY(camera.tree->findChild<QTextEdit *>()->toPlainText().isEmpty());
    QCOMPARE(camera.tree->findChild<QTreeView *>()->model()->rowCount(), 0);
    camera.tree->RefreshFeatures();
    camera.tree->OnBtnRefresh();
    fixture.close(camera);
}

void tst_featuretree::restartBuildsAnew()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const int items = camera.tree->AllTreeItemsMap().size();
    const int rows = camera.tree->findChild<QTreeView *>()->model()->rowCount();
    for (int turn = 0; turn < 3; ++turn) {
        camera.tree->OnResartCameraOpen(4);
        QCOMPARE(camera.tree->AllTreeItemsMap().size(), items);
        QCOMPARE(camera.tree->findChild<QTreeView *>()->model()->rowCount(), rows);
    }
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    QVERIFY(camera.tree->propertyItemByName(QStringLiteral("Width"))->isValueCached());
    fixture.close(camera);
}

void tst_featuretree::closeDuringUpdateReturnsAtOnce()
{
    ModuleFixture fixture;
    for (int turn = 0; turn < 5; ++turn) {
        const ModuleFixture::Camera camera = fixture.open(areaCamera());
        QElapsedTimer timer;
        timer.start();
        fixture.close(camera);
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    }
}

void tst_featuretree::closeOnASlowDeviceWaitsForOneAccess()
{
    ModuleFixture fixture;
    const auto device = areaCamera();
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    device.control->setLatency(200000);
    device.control->setLogging(true);
    device.control->clearAccessLog();
    camera.tree->RefreshFeatures();
    QTRY_VERIFY(!device.control->accessLog().isEmpty());
    QElapsedTimer timer;
    timer.start();
    camera.tree->StopThread(true);
    // One access under way, and no second one after it.
    QVERIFY2(timer.elapsed() < 390, qPrintable(QString::number(timer.elapsed())));
    device.control->setLatency(0);
    fixture.close(camera);
}

void tst_featuretree::vanishedDeviceWhileUpdating()
{
    ModuleFixture fixture;
    const auto device = areaCamera();
    device.control->setLatency(50);
    const ModuleFixture::Camera camera = fixture.open(device);
    device.control->vanish();
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    fixture.close(camera);
}

void tst_featuretree::messageAfterReadyForDelete()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    camera.tree->readyForDelete();
    QTest::ignoreMessage(QtInfoMsg, "ready for delete");
    camera.tree->ShowMessage(nullptr, QStringLiteral("title"), QStringLiteral("text"), QString(), 3,
                             true);
    QVERIFY(camera.tree->findChildren<CustomMessageBox *>().isEmpty());
    fixture.close(camera);
}

void tst_featuretree::oneBoxATree()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    camera.tree->ShowMessage(nullptr, QStringLiteral("first"), QString(), QString(), 1, false);
    camera.tree->ShowMessage(nullptr, QStringLiteral("title"), QStringLiteral("second"), QString(),
                             3, true);
    const QList<CustomMessageBox *> boxes = camera.tree->findChildren<CustomMessageBox *>();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first()->cContent(), QStringLiteral("second"));
    QCOMPARE(boxes.first()->cTextTitle(), QStringLiteral("title"));
    camera.tree->setMessageFalse(false);
    camera.tree->ShowMessage(nullptr, QStringLiteral("third"), QString(), QString(), 1, false);
    QCOMPARE(camera.tree->findChildren<CustomMessageBox *>().first()->cContent(),
             QStringLiteral("second"));
    fixture.close(camera);
}

void tst_featuretree::removedWhileABoxIsOpen()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    camera.tree->ShowMessage(nullptr, QStringLiteral("title"), QStringLiteral("text"), QString(), 3,
                             true);
    const QPointer<CustomMessageBox> box = camera.tree->findChild<CustomMessageBox *>();
    QVERIFY(box);
    fixture.close(camera);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!box);
}

void tst_featuretree::removedByItsOwnSignal()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    const QPointer<VexaFeatureTree> tree = camera.tree;
    connect(camera.tree, &VexaFeatureTree::SigFirstEndUpdateFeature, this,
            [&] { fixture.close(camera); });
    QTRY_VERIFY(!tree);
    QVERIFY(!fixture.mainWidget().isFeatureTreeExist(camera.id));
}

void tst_featuretree::releaseTwice()
{
    ModuleFixture fixture;
    VexaFeatureTree tree(-1);
    tree.Release();
    tree.Release();
    tree.OnCameraOpen(4);
    tree.OnResartCameraOpen(4);
    tree.OnBtnRefresh();
    tree.StopThread(true);
    tree.OnAddValueChangedNodes({QStringLiteral("Gain")});
    tree.OnCameraStartShot();
    QVERIFY(!tree.propertyItemByName(QStringLiteral("Gain")));
}

void tst_featuretree::observersHearTheOpenedCamera()
{
    ModuleFixture fixture;
    RecordingObserver stays;
    RecordingObserver leaves;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    camera.tree->AddFeatureObserverable(&stays);
    camera.tree->AddFeatureObserverable(&leaves);
    camera.tree->RemoveFeatureObserverable(&leaves);
    fixture.close(camera);
    QCOMPARE(stays.m_released, QList<long int>({camera.id}));
    QVERIFY(leaves.m_released.isEmpty());
}

void tst_featuretree::refreshNodeEvent()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    QVERIFY(taskOf(camera)->SetIntegerValue(QStringLiteral("OffsetX"), 16, nullptr));
    VexaPropertyTreeItem *item = camera.tree->propertyItemByName(QStringLiteral("OffsetX"));
    VexaNodeEventData other{static_cast<qint32>(camera.id + 1), "OffsetX"};
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, &other);
    QVERIFY(item->value()->value().toLongLong() != 16);
    VexaNodeEventData node{static_cast<qint32>(camera.id), "OffsetX"};
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, &node);
    QTRY_COMPARE(item->value()->value().toLongLong(), 16LL);
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, nullptr);
    fixture.close(camera);
}

void tst_featuretree::languageChange()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const VexaPropertyTreeItem *width = camera.tree->propertyItemByName(QStringLiteral("Width"));
    QVERIFY(!width->value()->m_strTranslateName.isEmpty());
    auto *view = camera.tree->findChild<QTreeView *>();
    QString name = QStringLiteral("Width");
    const auto shownName = [&] {
        camera.tree->JumpToFeature(name);
        return view->currentIndex().siblingAtColumn(0).data().toString();
    };
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("ENG");
    QCOMPARE(shownName(), width->value()->displayName());
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("CH");
    QCOMPARE(shownName(), width->value()->m_strTranslateName);
    QVERIFY(camera.tree->findChild<QTextEdit *>()->toPlainText().contains(
        width->value()->m_strTranslateName));
    fixture.close(camera);
}

void tst_featuretree::openAndCloseManyTimes()
{
    ModuleFixture fixture;
    const auto device = areaCamera();
    const auto widgets = [] { return QApplication::allWidgets().size(); };
    int before = 0;
    for (int turn = 0; turn < 20; ++turn) {
        const ModuleFixture::Camera camera = fixture.open(device);
        QVERIFY(camera.id != -1);
        fixture.close(camera);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (turn == 0) {
            before = widgets();
        }
    }
    QCOMPARE(widgets(), before);
}

QTEST_MAIN(tst_featuretree)
#include "tst_featuretree.moc"
