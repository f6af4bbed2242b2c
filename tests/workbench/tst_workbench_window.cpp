#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QFunction.h"
#include "WindowFixture.h"
#include "host/devicetask/CameraHost.h"
#include "host/shellservices/ShellHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/HeadlessRunner.h"
#include "host/workbench/MessageLogPanel.h"
#include "host/workbench/WorkbenchWindow.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QApplication>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include <atomic>
#include <memory>

/// The window as its user works with it: the list, the buttons, the language.
class WorkbenchWindowTest : public WindowTest
{
    Q_OBJECT
private slots:
    void selectionDecidesWhatIsShown();
    void tabGoesRound();
    void grabbingThatHangsLeavesTheWindowAlive();
    void closeWhileOpening();
    void foundDevicesJoinTheList();
    void messagesAreBounded();
    void promptIsShownOnceAndEscaped();
    void silentDeviceEndsAHeadlessRun();
};

void WorkbenchWindowTest::selectionDecidesWhatIsShown()
{
    w().openAndWait(FIRST);
    w().openAndWait(SECOND);
    QVERIFY(w().session(SECOND)->tree()->isVisible());
    w().select(FIRST);
    QVERIFY(w().session(FIRST)->tree()->isVisible());
    const long int first = w().session(FIRST)->cameraId();
    QCOMPARE(ShellHost::instance()->currentCameraID(), w().session(FIRST)->cameraId());
    // Closing the one on show leaves the other open and the empty page on show.
    w().click("CloseButton");
    QCOMPARE(ShellHost::instance()->currentCameraID(), -1L);
    QVERIFY(!VexaMainFeatureWidget::instance()->isFeatureTreeExist(first));
    QVERIFY(QTaskManager::Instance()->IsCameraTaskReleased(first));
    QVERIFY(!w().session(SECOND)->tree()->isVisible());
    w().select(SECOND);
    QVERIFY(w().session(SECOND)->tree()->isVisible());
}

/// Twice: editors that had the focus once stay out of the window's own order.
void WorkbenchWindowTest::tabGoesRound()
{
    w().openAndWait(FIRST);
    QVERIFY(QTest::qWaitForWindowActive(&w().window()));
    for (const char *feature : {"ReverseX", "PixelFormat"}) {
        const auto *editor = w().session(FIRST)->tree()->findChild<QWidget *>(feature);
        QTRY_VERIFY_WITH_TIMEOUT(editor && editor->isEnabled(), LONG_WAIT);
    }
    w().list()->setFocus();
    QStringList rounds[2];
    for (QStringList &round : rounds) {
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            round += QApplication::focusWidget()->objectName();
        } while (round.last() != "DeviceList" && round.size() < 300);
        QCOMPARE(round.last(), QString("DeviceList"));
        QVERIFY(round.contains("FeatureSearch"));
        QCOMPARE(round.at(round.size() - 2), QString("MessageLog"));
    }
    QVERIFY(rounds[0].contains("ReverseX") && rounds[0].contains("PixelFormat"));
}

void WorkbenchWindowTest::grabbingThatHangsLeavesTheWindowAlive()
{
    w().openAndWait(FIRST);
    w().control(FIRST).blockNextAccess();
    w().click("StartButton");
    QCOMPARE(w().stateText(FIRST), QString("Starting"));
    QVERIFY(!w().isEnabled("StartButton") && !w().isEnabled("StopButton"));
    w().control(FIRST).unblock();
    QTRY_COMPARE(w().stateText(FIRST), QString("Grabbing"));
    QVERIFY(!w().isEnabled("StartButton") && w().isEnabled("StopButton"));
    w().control(FIRST).blockNextAccess();
    w().click("StopButton");
    QCOMPARE(w().stateText(FIRST), QString("Stopping"));
    w().click("CloseButton");
    QCOMPARE(w().stateText(FIRST), QString("Available"));
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
}

void WorkbenchWindowTest::closeWhileOpening()
{
    w().control(FIRST).blockNextAccess();
    w().select(FIRST);
    w().click("OpenButton");
    QCOMPARE(w().stateText(FIRST), QString("Opening"));
    w().click("CloseButton");
    QCOMPARE(w().stateText(FIRST), QString("Available"));
    QTest::qWait(50); // the opening still hangs, the window does not
    w().control(FIRST).unblock();
    QTRY_COMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    w().openAndWait(FIRST);
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 1U);
}

void WorkbenchWindowTest::foundDevicesJoinTheList()
{
    const auto camera = std::make_shared<DeviceSource>();
    camera->id = "192.168.7.9";
    camera->name = camera->model = "Model";
    const auto usb = std::make_shared<DeviceSource>(*camera);
    usb->id = "U3V-1";
    usb->deviceType = DEVICE_TYPE_U3V;
    const auto found = std::make_shared<std::atomic<bool>>(false);
    w().window().setSearch([camera, usb, found] {
        while (!*found) {
            QThread::yieldCurrentThread();
        }
        return DeviceSearch::Found{usb, camera};
    });
    const auto *button = w().window().findChild<QPushButton *>("DiscoverButton");
    for (const char *outcome : {"2 devices answered, 2 of them", "2 devices answered, 0 of them"}) {
        *found = false;
        w().click("DiscoverButton");
        QVERIFY(!button->isEnabled() && button->text() == "Searching ...");
        *found = true;
        QTRY_VERIFY(button->isEnabled());
        QVERIFY2(w().messages().count(outcome) == 1, qPrintable(w().messages()));
    }
    QStringList rows;
    for (int row = 0; row < w().list()->topLevelItemCount(); ++row) {
        rows += w().list()->topLevelItem(row)->text(0);
    }
    QCOMPARE(rows,
             QStringList(
                 {"Simulated", FIRST, SECOND, "GigE Vision", camera->id, "USB3 Vision", usb->id}));
    // A heading cannot be selected, with the mouse or the keyboard.
    QTest::mouseClick(w().list()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      w().list()->visualItemRect(w().list()->topLevelItem(3)).center());
    QCOMPARE(w().list()->currentItem()->text(0), FIRST);
    w().select(SECOND);
    QTest::keyClick(w().list(), Qt::Key_Down);
    QCOMPARE(w().list()->currentItem()->text(0), camera->id);
    // A real device that is not there is refused with a reason.
    w().source(camera->id).create = nullptr;
    w().click("OpenButton");
    QTRY_COMPARE(w().stateText(camera->id), QString("Available"));
    QVERIFY(w().messages().contains("could not be opened"));
}

void WorkbenchWindowTest::messagesAreBounded()
{
    for (int count = 0; count < MessageLogPanel::MAXIMUM_MESSAGES + 50; ++count) {
        QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_INFO, "camera",
                                                QString("line\n%1").arg(count));
    }
    const QStringList lines = w().messages().split('\n');
    QCOMPARE(lines.size(), MessageLogPanel::MAXIMUM_MESSAGES);
    QVERIFY(lines.last().contains("camera: line 1049"));
}

void WorkbenchWindowTest::promptIsShownOnceAndEscaped()
{
    QFunction::Instance()->SendShowPromptSignal(-1, 3, "<b>no markup</b>", "Title", false);
    QTRY_COMPARE(w().window().findChildren<CustomMessageBox *>().size(), 1);
    const QList<CustomMessageBox *> boxes = w().window().findChildren<CustomMessageBox *>();
    QCOMPARE(boxes.first()->cContent(), QString("<p>&lt;b&gt;no markup&lt;/b&gt;</p>"));
    QVERIFY2(w().messages().contains("Error  Title: <b>no markup</b>"), qPrintable(w().messages()));
    boxes.first()->close();
}

void WorkbenchWindowTest::silentDeviceEndsAHeadlessRun()
{
    WorkbenchOptions options;
    options.readName = "Width";
    HeadlessRunner runner(w().window(), options, {FIRST}, std::chrono::milliseconds(300));
    QSignalSpy finished(&runner, &HeadlessRunner::finished);
    w().control(FIRST).blockNextAccess();
    runner.start();
    QVERIFY(finished.wait(10000));
    QCOMPARE(finished.first().first().toInt(), 1);
    QVERIFY2(w().messages().contains("No answer from area-camera"), qPrintable(w().messages()));
    w().control(FIRST).unblock();
}

QTEST_MAIN(WorkbenchWindowTest)
#include "tst_workbench_window.moc"
