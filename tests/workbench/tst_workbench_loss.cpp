#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "WindowFixture.h"
#include "host/devicetask/CameraHost.h"
#include "host/shellservices/ShellHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/DeviceStateBanner.h"
#include "host/workbench/WorkbenchTexts.h"
#include "host/workbench/WorkbenchWindow.h"
#include "tree/VexaFeatureTree.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

/// Devices that stop to answer, vanish, come back, or belong to another host, as the user of the window sees them.
class WorkbenchLossTest : public WindowTest
{
    Q_OBJECT
private slots:
    void silenceIsToldOnce();
    void deviceThatComesBackIsRebuilt();
    void restartMakesTheTreeAnew();
    void deviceThatStaysAwayIsClosed();
    void controlledElsewhereAtOpening();
    void controlledElsewhereAfterALoss();
    void lossInTheFirstUpdate();
    void bannerFollowsTheLanguage();

private:
    DeviceStateBanner *banner() { return w().window().findChild<DeviceStateBanner *>(); }
    /// Of the tool bar over the tree.
    int enabledToolButtons();
    int notices(const char *key) { return w().messages().count(workbenchText(key)); }
    void runCommand(const QString &id, const char *command);
};

namespace {

constexpr quint64 DEVICE_USER_ID = 0xE8;

} // namespace

int WorkbenchLossTest::enabledToolButtons()
{
    const VexaFeatureTree *tree = w().session(FIRST)->tree();
    int enabled = 0;
    for (const QPushButton *button : tree->findChildren<QPushButton *>()) {
        enabled += button->isEnabled()
            && QByteArray(button->parentWidget()->metaObject()->className())
                == "VexaFeatureToolBar";
    }
    return enabled;
}

void WorkbenchLossTest::runCommand(const QString &id, const char *command)
{
    const long int cameraId = w().session(id)->cameraId();
    QCameraTask *task = QTaskManager::Instance()->GetTaskByIDEx(cameraId)->_CameraTak();
    QVERIFY2(task->ExecuteCommand(QLatin1String(command), nullptr),
             qPrintable(task->GetLastErrorRemark()));
}

void WorkbenchLossTest::silenceIsToldOnce()
{
    w().openAndWait(FIRST);
    const QPointer<VexaFeatureTree> tree = w().session(FIRST)->tree();
    QCOMPARE(enabledToolButtons(), 5);
    QVERIFY(banner()->isHidden());
    w().control(FIRST).blockNextAccess();
    tree->RefreshFeatures();
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Not responding"), LONG_WAIT);
    QCOMPARE(enabledToolButtons(), 0);
    QVERIFY(banner()->isVisible());
    QVERIFY(!w().isEnabled("StartButton") && w().isEnabled("CloseButton"));
    // Further accesses fail; the poke is seen only by a full update after the return.
    for (int count = 0; count < 10; ++count) {
        tree->RefreshFeatures();
        QTest::qWait(20);
    }
    w().control(FIRST).poke(DEVICE_USER_ID, QByteArray("poked\0", 6));
    QCOMPARE(notices("lang_workbench_notresponding"), 1);

    w().control(FIRST).unblock();
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Open"), LONG_WAIT);
    QCOMPARE(enabledToolButtons(), 5);
    QVERIFY(banner()->isHidden());
    QTRY_COMPARE_WITH_TIMEOUT(w().shown(FIRST, "DeviceUserID"), QString("poked"), LONG_WAIT);
    QCOMPARE(w().session(FIRST)->tree(), tree.data());
    QCOMPARE(notices("lang_workbench_answers"), 1);
    QCOMPARE(notices("lang_workbench_notresponding"), 1);
    QCOMPARE(notices("lang_workbench_lost"), 0);

    // The same when every access times out, and a long silence is a loss.
    w().silence(FIRST);
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Not responding"), LONG_WAIT);
    const QDateTime since = w().session(FIRST)->since();
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Lost"), LONG_WAIT);
    QCOMPARE(notices("lang_workbench_notresponding"), 2);
    QCOMPARE(notices("lang_workbench_lost"), 0);
    QCOMPARE(w().session(FIRST)->since(), since);
    w().answerAgain(FIRST);
    w().forgetUpdates();
    QTRY_VERIFY_WITH_TIMEOUT(w().isUpdated(FIRST), LONG_WAIT);
    QCOMPARE(w().stateText(FIRST), QString("Open"));
}

void WorkbenchLossTest::deviceThatComesBackIsRebuilt()
{
    w().openAndWait(FIRST);
    w().click("StartButton");
    QTRY_COMPARE(w().stateText(FIRST), QString("Grabbing"));
    QCOMPARE(enabledToolButtons(), 2); // import, export and files are shut
    const QPointer<VexaFeatureTree> tree = w().session(FIRST)->tree();
    const long int cameraId = w().session(FIRST)->cameraId();
    QSignalSpy lost(&w().window(), &WorkbenchWindow::deviceLost);
    w().unplug(FIRST);
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Lost"), LONG_WAIT);
    QTest::qWait(1200); // one try in vain at least
    QCOMPARE(w().session(FIRST)->tree(), tree.data());
    QVERIFY(tree->isVisible() && tree->isInitialized(cameraId) && banner()->isVisible());
    QCOMPARE(enabledToolButtons(), 0);

    w().forgetUpdates();
    w().control(FIRST).poke(DEVICE_USER_ID, QByteArray("poked\0", 6));
    w().control(FIRST).comeBack();
    QTRY_VERIFY_WITH_TIMEOUT(w().isUpdated(FIRST), LONG_WAIT);
    QCOMPARE(w().stateText(FIRST), QString("Open"));
    QCOMPARE(w().session(FIRST)->tree(), tree.data());
    QCOMPARE(w().session(FIRST)->cameraId(), cameraId);
    QCOMPARE(w().shown(FIRST, "DeviceUserID"), QString("poked"));
    QCOMPARE(enabledToolButtons(), 5);
    QVERIFY(banner()->isHidden() && w().isEnabled("StartButton"));
    QCOMPARE(lost.size(), 1);
    QCOMPARE(notices("lang_workbench_lost"), 1);
    QCOMPARE(notices("lang_workbench_returned"), 1);
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 1U);
}

void WorkbenchLossTest::restartMakesTheTreeAnew()
{
    w().openAndWait(FIRST);
    w().control(FIRST).setRestartTime(400);
    const QPointer<VexaFeatureTree> tree = w().session(FIRST)->tree();
    const long int cameraId = w().session(FIRST)->cameraId();
    w().forgetUpdates();
    runCommand(FIRST, "DeviceReset");
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Lost"), LONG_WAIT);
    QVERIFY(tree);
    QTRY_VERIFY_WITH_TIMEOUT(w().isUpdated(FIRST), LONG_WAIT);
    QVERIFY(!tree);
    QCOMPARE(w().session(FIRST)->cameraId(), cameraId);
    QVERIFY(w().session(FIRST)->tree()->isVisible());
    QCOMPARE(w().stateText(FIRST), QString("Open"));
    QCOMPARE(enabledToolButtons(), 5);
    QCOMPARE(notices("lang_workbench_restarted"), 1);
}

void WorkbenchLossTest::deviceThatStaysAwayIsClosed()
{
    w().window().setReturnTime(std::chrono::milliseconds(300));
    w().openAndWait(FIRST);
    w().unplug(FIRST);
    QTRY_COMPARE_WITH_TIMEOUT(notices("lang_workbench_notreturned"), 1, LONG_WAIT);
    QCOMPARE(w().stateText(FIRST), QString("Lost"));
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    QCOMPARE(ShellHost::instance()->currentCameraID(), -1L);
    QVERIFY(banner()->isVisible() && w().isEnabled("OpenButton") && !w().isEnabled("CloseButton"));
    w().control(FIRST).comeBack();
    w().forgetUpdates();
    w().openAndWait(FIRST);
    QCOMPARE(w().stateText(FIRST), QString("Open"));
    QVERIFY(banner()->isHidden());
}

void WorkbenchLossTest::controlledElsewhereAtOpening()
{
    w().control(FIRST).setControlledElsewhere(true);
    w().openAndWait(FIRST);
    QCOMPARE(w().stateText(FIRST), QString("Read only"));
    QVERIFY(!w().isEnabled("StartButton") && w().isEnabled("CloseButton"));
    QVERIFY(banner()->isVisible() && !w().session(FIRST)->tree()->isCanEdit());
    QCOMPARE(notices("lang_workbench_readonly"), 1);
    w().click("CloseButton");
    QVERIFY(banner()->isHidden());
    w().control(FIRST).setControlledElsewhere(false);
    w().forgetUpdates();
    w().openAndWait(FIRST);
    QCOMPARE(w().stateText(FIRST), QString("Open"));
    QVERIFY(w().session(FIRST)->tree()->isCanEdit());
}

void WorkbenchLossTest::controlledElsewhereAfterALoss()
{
    w().openAndWait(FIRST);
    const QPointer<VexaFeatureTree> tree = w().session(FIRST)->tree();
    w().forgetUpdates();
    w().control(FIRST).setControlledElsewhere(true);
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Read only"), LONG_WAIT);
    QTRY_VERIFY_WITH_TIMEOUT(w().isUpdated(FIRST), LONG_WAIT);
    QVERIFY(!tree && !w().session(FIRST)->tree()->isCanEdit());
    QCOMPARE(notices("lang_workbench_readonly"), 1);
    // What was read only is not made writable in place.
    w().forgetUpdates();
    w().control(FIRST).setControlledElsewhere(false);
    w().unplug(FIRST);
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Lost"), LONG_WAIT);
    w().control(FIRST).comeBack();
    QTRY_VERIFY_WITH_TIMEOUT(w().isUpdated(FIRST), LONG_WAIT);
    QCOMPARE(w().stateText(FIRST), QString("Open"));
    QVERIFY(w().session(FIRST)->tree()->isCanEdit() && w().isEnabled("StartButton"));
}

void WorkbenchLossTest::lossInTheFirstUpdate()
{
    w().control(FIRST).setLatency(1000);
    w().select(FIRST);
    w().click("OpenButton");
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Open"), LONG_WAIT);
    w().unplug(FIRST);
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(FIRST), QString("Lost"), LONG_WAIT);
    // A pass without an answer is no update.
    QTest::qWait(200);
    QVERIFY(!w().isUpdated(FIRST));
    w().control(FIRST).setLatency(0);
    w().control(FIRST).comeBack();
    QTRY_VERIFY_WITH_TIMEOUT(w().isUpdated(FIRST), LONG_WAIT);
    QVERIFY(!w().shown(FIRST, "DeviceModelName").isEmpty());
}

void WorkbenchLossTest::bannerFollowsTheLanguage()
{
    const QString english = "The connection to the device was lost";
    w().window().setReturnTime(std::chrono::seconds(90));
    w().openAndWait(FIRST);
    w().unplug(FIRST);
    const auto *title = banner()->findChild<QLabel *>("DeviceStateTitle");
    const auto *text = banner()->findChild<QLabel *>("DeviceStateText");
    QTRY_COMPARE(title->text(), english);
    const QString state = w().stateText(FIRST);
    const QString time = w().session(FIRST)->since().toString("HH:mm:ss");
    QVERIFY2(text->text().contains(time), qPrintable(text->text()));
    const QString englishText = text->text();
    for (const char *language : {"CH", "ENG"}) {
        w().window().setLanguage(language);
        QCoreApplication::processEvents();
        const bool isEnglish = QByteArray(language) == "ENG";
        QCOMPARE(title->text() == english, isEnglish);
        QCOMPARE(text->text() == englishText, isEnglish);
        QVERIFY(text->text().contains("90"));
        // So do the lines that stand in the log already.
        QCOMPARE(w().messages().count(workbenchText("lang_workbench_opened")), 1);
        QCOMPARE(w().stateText(FIRST) == state, isEnglish);
        QVERIFY(text->text().contains(time) && !text->text().contains('%'));
        QCOMPARE(banner()->accessibleName(), title->text());
        // Nothing is cut off, neither to the right nor below.
        QVERIFY(title->fontMetrics().horizontalAdvance(title->text()) <= title->width());
        QTRY_VERIFY(text->heightForWidth(text->width()) <= text->height());
    }
}

QTEST_MAIN(WorkbenchLossTest)
#include "tst_workbench_loss.moc"
