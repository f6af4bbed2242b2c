#include "ControlKit/CustomMessageBox.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tests/tree/FeatureRecorder.h"
#include "tree/QGetFeaturesThread.h"

#include <QPointer>
#include <QTextEdit>
#include <QTreeView>
#include <QtTest>

namespace {

/// An area camera after its first update.
struct Opened : ModuleFixture
{
    explicit Opened(unsigned int accessMode = 4)
        : camera(open(SimulatedDevices::builtIn("area-camera"), accessMode))
    {
        waitForFirstUpdate(camera);
        control.setLogging(true);
    }
    const Camera camera;
    VexaFeatureTree &tree = *camera.tree;
    SimulatorControl &control = *camera.device.control;
};

} // namespace

class tst_featuretree : public QObject
{
    Q_OBJECT
private slots:
    void opensOnceRestartsAndCloses();
    void stopWaitsForOneAccessOnly();
    void boxes();
    void removedByItsOwnSignal();
    void releaseTwice();
    void refreshNodeEvent();
};

void tst_featuretree::opensOnceRestartsAndCloses()
{
    Opened f(2);
    QVERIFY(!f.tree.isCanEdit());
    const QMap<QString, VexaPropertyTreeItem *> items = f.tree.AllTreeItemsMap();
    const QAbstractItemModel *model = f.tree.findChild<QTreeView *>()->model();
    const int rows = model->rowCount();
    QVERIFY(items.size() >= 180);
    f.tree.OnCameraOpen(4);
    QCOMPARE(f.tree.AllTreeItemsMap(), items);
    for (int turn = 0; turn < 3; ++turn) {
        f.tree.OnResartCameraOpen(4);
        QCOMPARE(f.tree.AllTreeItemsMap().keys(), items.keys());
        QCOMPARE(model->rowCount(), rows);
    }
    QVERIFY(ModuleFixture::waitForFirstUpdate(f.camera));
    QVERIFY(f.tree.propertyItemByName("Width")->isValueCached());

    const FeatureRecorder stays(f.tree);
    FeatureRecorder leaves(f.tree);
    f.tree.RemoveFeatureObserverable(&leaves);
    f.tree.OnCameraClose();
    QVERIFY(f.tree.GetCurCameraID() == -1 && f.tree.AllTreeItemsMap().isEmpty());
    QVERIFY(f.tree.findChild<QTextEdit *>()->toPlainText().isEmpty());
    QCOMPARE(model->rowCount(), 0);
    f.tree.RefreshFeatures();
    f.tree.OnBtnRefresh();
    f.close(f.camera);
    QVERIFY(stays.m_released.size() == 1 && leaves.m_released.isEmpty());
}

void tst_featuretree::stopWaitsForOneAccessOnly()
{
    const Opened f;
    f.control.setLatency(200000);
    f.control.clearAccessLog();
    f.tree.RefreshFeatures();
    QTRY_VERIFY(!f.control.accessLog().isEmpty());
    const int before = f.control.accessLog().size();
    f.tree.StopThread(true);
    // One that is under way and what begins until the stop is asked for, on a machine that stalls; a pass has hundreds.
    QVERIFY(f.control.accessLog().size() <= before + 10);
    f.control.setLatency(0);
}

void tst_featuretree::boxes()
{
    Opened f;
    f.tree.ShowMessage(nullptr, "first", QString(), QString(), 1, false);
    f.tree.ShowMessage(nullptr, "title", "second", QString(), 3, true);
    f.tree.setMessageFalse(false);
    f.tree.ShowMessage(nullptr, "third", QString(), QString(), 1, false);
    const QList<CustomMessageBox *> boxes = f.tree.findChildren<CustomMessageBox *>();
    QCOMPARE(boxes.size(), 1);
    const QPointer<CustomMessageBox> box = boxes.first();
    QCOMPARE(box->cContent() + box->cTextTitle(), QString("secondtitle"));
    f.close(f.camera);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!box);
}

void tst_featuretree::removedByItsOwnSignal()
{
    ModuleFixture fixture;
    const auto camera = fixture.open(SimulatedDevices::builtIn("area-camera"));
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
    QVERIFY(tree.InitWidget());
    QCOMPARE(tree.findChildren<QGetFeaturesThread *>().size(), 4);
    tree.Release();
    tree.Release();
    tree.OnCameraOpen(4);
    tree.OnResartCameraOpen(4);
    tree.OnBtnRefresh();
    tree.StopThread(true);
    tree.OnAddValueChangedNodes({"Gain"});
    tree.OnCameraStartShot();
    QVERIFY(!tree.propertyItemByName("Gain"));
}

void tst_featuretree::refreshNodeEvent()
{
    const Opened f;
    QVERIFY(taskOf(f.camera)->SetIntegerValue("OffsetX", 16, nullptr));
    const VexaPropertyTreeItem *item = f.tree.propertyItemByName("OffsetX");
    const auto tell = [](long int cameraId) {
        VexaNodeEventData node{static_cast<qint32>(cameraId), "OffsetX"};
        VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, &node);
    };
    tell(f.camera.id + 1);
    QVERIFY(item->value()->value().toLongLong() != 16);
    tell(f.camera.id);
    QTRY_COMPARE(item->value()->value().toLongLong(), 16LL);
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, nullptr);
}

QTEST_MAIN(tst_featuretree)
#include "tst_featuretree.moc"
