#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaFeatureToolBar.h"
#include "tests/support/ModuleFixture.h"

#include <QAbstractButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTreeView>
#include <QtTest>

namespace {

SimulatedDevices::Simulated areaCamera()
{
    return SimulatedDevices::builtIn("area-camera");
}

} // namespace

class tst_mainfeaturewidget : public QObject
{
    Q_OBJECT
private slots:
    void withoutTaskManager();
    void vanishedCameraGetsTheEmptyPage();
    void workersMakeNoTree();
    void removingTheCurrentCamera();
    void expandStates();
    void enabledToolButtons();
};

void tst_mainfeaturewidget::withoutTaskManager()
{
    QVERIFY(!QTaskManager::Instance());
    VexaMainFeatureWidget *widget = VexaMainFeatureWidget::instance();
    QVERIFY(!widget->featureTree(1, true));
    QVERIFY(!widget->featureTree(-1, false));
    widget->setCurrentCameraID(1);
    widget->OnToolBarBtnClicked(VexaFeatureToolBar::BUTTON_REFRESH);
    QCOMPARE(widget->getAllFeatureTreeStacked()->count(), 0);
    delete widget;
}

void tst_mainfeaturewidget::vanishedCameraGetsTheEmptyPage()
{
    ModuleFixture fixture;
    VexaFeatureTree *emptyPage = fixture.mainWidget().featureTree(-1, false);
    QVERIFY(emptyPage);
    QCOMPARE(fixture.mainWidget().featureTree(4711, false), emptyPage);
    QVERIFY(!fixture.mainWidget().isFeatureTreeExist(4711));
    emit QVexaEventBus::Instance()->SigVexaEventUpdateFeatureTree2(-5, {"Width"});
    QCOMPARE(fixture.mainWidget().getAllFeatureTreesMap().size(), 1);
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QVERIFY(camera.tree != emptyPage);
    QCOMPARE(fixture.mainWidget().featureTree(camera.id, false), camera.tree);
    QVERIFY(fixture.mainWidget().getItemByName("Width", STEP_FEATURE_TREE));
    QVERIFY(!fixture.mainWidget().getItemByName("Width", static_cast<StepIndex>(2)));
    QVERIFY(!fixture.mainWidget().getItemByName(QString(), STEP_FEATURE_TREE));
    fixture.close(camera);
    QCOMPARE(fixture.mainWidget().featureTree(camera.id, false), emptyPage);
}

void tst_mainfeaturewidget::workersMakeNoTree()
{
    ModuleFixture fixture;
    const auto device = areaCamera();
    const long int id = fixture.host().openCamera(*device.source).cameraId;
    VexaFeatureTree *found = nullptr;
    QScopedPointer<QThread> worker(
        QThread::create([&] { found = fixture.mainWidget().featureTree(id, true); }));
    worker->start();
    QVERIFY(worker->wait());
    QCOMPARE(found, fixture.mainWidget().featureTree(-1, false));
    QVERIFY(!fixture.mainWidget().isFeatureTreeExist(id));
    fixture.host().closeCamera(id);
}

void tst_mainfeaturewidget::removingTheCurrentCamera()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QStackedWidget *stack = fixture.mainWidget().getAllFeatureTreeStacked();
    QCOMPARE(stack->currentWidget(), camera.tree);
    // The listeners' event comes back through the widget itself.
    QSignalSpy told(&fixture.mainWidget(), &VexaMainFeatureWidget::sigBeforeDeleteFeature);
    fixture.mainWidget().removeFeatureTree(99); // of nobody
    fixture.mainWidget().removeFeatureTree(camera.id);
    QCOMPARE(told.size(), 1);
    QCOMPARE(stack->currentWidget(), fixture.mainWidget().featureTree(-1, false));
    QCOMPARE(stack->count(), 1);
    // The current id is -1 now: the tree's tool bar is passed over.
    fixture.mainWidget().UpdateToolBarBtn(1, static_cast<int>(camera.id), false);
    fixture.host().closeCamera(camera.id);
}

void tst_mainfeaturewidget::expandStates()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.open(areaCamera());
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    auto *view = camera.tree->findChild<QTreeView *>();
    const QModelIndex category = view->model()->index(0, 0);
    QVERIFY(view->isExpanded(category));
    auto *bar = camera.tree->findChild<VexaFeatureToolBar *>();
    auto *button = bar->findChildren<QAbstractButton *>().at(1);
    QSignalSpy clicked(bar, &VexaFeatureToolBar::SigToolBarBtnClicked);
    button->click();
    QCOMPARE(clicked.takeFirst().first().toInt(), int(VexaFeatureToolBar::BUTTON_EXPAND));
    QVERIFY(!view->isExpanded(category));
    button->click();
    QVERIFY(view->isExpanded(category));
    // A search that expands the tree brings the state along: the next click collapses.
    button->click();
    emit camera.tree->SigExpandTree();
    fixture.mainWidget().onFeatureTreeExpand();
    QVERIFY(!view->isExpanded(category));
    // A camera without a state is passed over.
    fixture.mainWidget().OnCameraClose(camera.id);
    fixture.mainWidget().onFeatureTreeExpand();
    QVERIFY(!view->isExpanded(category));
}

void tst_mainfeaturewidget::enabledToolButtons()
{
    ModuleFixture fixture;
    const auto device = areaCamera();
    const int id = static_cast<int>(fixture.host().openCamera(*device.source).cameraId);
    VexaFeatureToolBar bar(nullptr);
    const auto enabled = [&](int state, bool busy) {
        bar.UpdateToolBarBtn(state, id, busy);
        QString letters = "REIXF"; // refresh, expand, import, export, file access
        for (int i = 0; i < letters.size(); ++i) {
            if (!bar.findChildren<QAbstractButton *>().at(i)->isEnabled()) {
                letters[i] = '-';
            }
        }
        return letters;
    };
    QCOMPARE(enabled(0, false), QString("-----")); // another state than live
    QCOMPARE(enabled(1, false), QString("REIXF"));
    QCOMPARE(enabled(1, true), QString("RE---"));
    QVERIFY(fixture.host().startGrabbing(id));
    QCOMPARE(enabled(1, false), QString("RE---"));
    fixture.host().closeCamera(id);
    QCOMPARE(enabled(1, false), QString("-----"));
}

QTEST_MAIN(tst_mainfeaturewidget)
#include "tst_mainfeaturewidget.moc"
