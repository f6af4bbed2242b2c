#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"

#include <QPointer>
#include <QTextEdit>
#include <QTreeView>
#include <QtTest>

namespace {

SimulatedDevices::Simulated areaCamera()
{
    return SimulatedDevices::builtIn("area-camera");
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
    void opensOnceRestartsAndCloses();
    void stopWaitsForOneAccessOnly();
    void boxes();
    void removedByItsOwnSignal();
    void releaseTwice();
    void refreshNodeEvent();
};

void tst_featuretree::opensOnceRestartsAndCloses()
{
    RecordingObserver stays;
    RecordingObserver leaves;
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera(), 2);
    VexaFeatureTree &tree = *camera.tree;
    QVERIFY(!tree.isCanEdit());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const QMap<QString, VexaPropertyTreeItem *> items = tree.AllTreeItemsMap();
    const QAbstractItemModel *model = tree.findChild<QTreeView *>()->model();
    const int rows = model->rowCount();
    QVERIFY(items.size() >= 180);
    tree.OnCameraOpen(4);
    QCOMPARE(tree.AllTreeItemsMap(), items);
    for (int turn = 0; turn < 3; ++turn) {
        tree.OnResartCameraOpen(4);
        QCOMPARE(tree.AllTreeItemsMap().keys(), items.keys());
        QCOMPARE(model->rowCount(), rows);
    }
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    QVERIFY(tree.propertyItemByName("Width")->isValueCached());

    tree.AddFeatureObserverable(&stays);
    tree.AddFeatureObserverable(&leaves);
    tree.RemoveFeatureObserverable(&leaves);
    tree.OnCameraClose();
    QVERIFY(tree.GetCurCameraID() == -1 && tree.AllTreeItemsMap().isEmpty());
    QVERIFY(tree.findChild<QTextEdit *>()->toPlainText().isEmpty());
    QCOMPARE(model->rowCount(), 0);
    tree.RefreshFeatures();
    tree.OnBtnRefresh();
    fixture.close(camera);
    QVERIFY(stays.m_released.size() == 1 && leaves.m_released.isEmpty());
}

void tst_featuretree::stopWaitsForOneAccessOnly()
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
    const int before = device.control->accessLog().size();
    camera.tree->StopThread(true);
    // One that is under way, and one that began while the stop was asked for.
    QVERIFY(device.control->accessLog().size() <= before + 2);
    device.control->setLatency(0);
}

void tst_featuretree::boxes()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    const auto boxes = [&camera] { return camera.tree->findChildren<CustomMessageBox *>(); };
    camera.tree->ShowMessage(nullptr, "first", QString(), QString(), 1, false);
    camera.tree->ShowMessage(nullptr, "title", "second", QString(), 3, true);
    camera.tree->setMessageFalse(false);
    camera.tree->ShowMessage(nullptr, "third", QString(), QString(), 1, false);
    QCOMPARE(boxes().size(), 1);
    const QPointer<CustomMessageBox> box = boxes().first();
    QCOMPARE(box->cContent() + box->cTextTitle(), QString("secondtitle"));
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
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    QVERIFY(taskOf(camera)->SetIntegerValue("OffsetX", 16, nullptr));
    const VexaPropertyTreeItem *item = camera.tree->propertyItemByName("OffsetX");
    VexaNodeEventData other{static_cast<qint32>(camera.id + 1), "OffsetX"};
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, &other);
    QVERIFY(item->value()->value().toLongLong() != 16);
    VexaNodeEventData node{static_cast<qint32>(camera.id), "OffsetX"};
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, &node);
    QTRY_COMPARE(item->value()->value().toLongLong(), 16LL);
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_REFRESH_NODE, nullptr);
}

QTEST_MAIN(tst_featuretree)
#include "tst_featuretree.moc"
