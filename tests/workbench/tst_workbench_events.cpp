#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "WindowFixture.h"
#include "host/shellservices/ShellHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/WorkbenchWindow.h"

#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include <functional>
#include <memory>
#include <thread>

using Event = std::function<void(long int cameraId)>;
Q_DECLARE_METATYPE(Event)

/// What the window answers to the module's events: lines of the log, marks in the list, a refresh.
class WorkbenchEventsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_pFixture = std::make_unique<WindowFixture>(); }
    void cleanup() { m_pFixture.reset(); }
    void eventsLeaveALine_data();
    void eventsLeaveALine();
    void loadedParametersAreReadAgain();
    void listFollowsNameAndMark();
    void closingAsksForUnsavedChanges_data();
    void closingAsksForUnsavedChanges();

private:
    WindowFixture &w() { return *m_pFixture; }

    std::unique_ptr<WindowFixture> m_pFixture;
};

namespace {

const QString FIRST = WindowFixture::FIRST;
const QString SECOND = WindowFixture::SECOND;

Event listenerEvent(const char *state)
{
    return [state](long int cameraId) {
        QString text = QString::fromLatin1(state);
        void *data = *state ? static_cast<void *>(&text) : &cameraId;
        VexaListenTools::instance()->notifyListeners(*state ? 19 : 18, data);
    };
}

Event imageEvent(const char *state)
{
    return [state](long int) {
        emit QVexaEventBus::Instance()->SigVexaEventTestImgNodeChanged(QString::fromLatin1(state));
    };
}

/// Answers the next question with this button's place in the row; `seen` gets what was asked.
void answerNextBox(QWidget *window, bool yes, QString *seen)
{
    auto *timer = new QTimer(window);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto *box = window->findChild<CustomMessageBox *>();
        if (!box || !box->isVisible()) {
            return;
        }
        timer->deleteLater();
        *seen = box->cContent();
        for (QPushButton *button : box->findChildren<QPushButton *>()) {
            if (button->text() == (yes ? "Yes" : "No")) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
    });
    timer->start(5);
}

} // namespace

void WorkbenchEventsTest::eventsLeaveALine_data()
{
    QTest::addColumn<Event>("event");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("chinese");
    const auto row = [](const char *name, const Event &event, const char *line,
                        const char *chinese) {
        QTest::newRow(name) << event << QString::fromUtf8(line) << QString::fromUtf8(chinese);
    };
    QVexaEventBus *bus = QVexaEventBus::Instance();
    row(
        "region unheard", [=](long int id) { emit bus->SigVexaEventUpdateROI(id); },
        "The region in which codes", "读码区域");
    row(
        "role unheard", [=](long int id) { emit bus->SigVexaEventStateRoleChanged(id); },
        "The role of the station", "工作站角色");
    row(
        "stations unheard", [=](long int id) { emit bus->SigVexaEventUpdateMainSub(id, true); },
        "Main and sub stations", "主从站");
    row(
        "polling unheard", [=](long int) { emit bus->SigVexaEventCameraPollingParamChanged(); },
        "A polling parameter", "轮询参数");
    row(
        "smart tune unheard", [=](long int) { emit bus->SigVexaEventStartSmartTune(true); },
        "Smart tune", "智能调节");
    row(
        "adaptation taken for smart tune",
        [=](long int) { emit bus->SigVexaEventStartSmartTune(false); }, "The adaptation", "自适应");
    row("test image on taken for off", imageEvent("test_open"), "test pattern on", "已开启");
    row("test image off taken for on", imageEvent("test_close"), "test pattern off", "已关闭");
    row("upload on taken for off", imageEvent("ftp_open"), "test images on", "已开启");
    row("upload off taken for on", imageEvent("ftp_close"), "test images off", "已关闭");
    row("event 18 unheard", listenerEvent(""), "polling or protocol", "通信协议");
    row("event 19 test on", listenerEvent("test_open"), "sends the test pattern", "以测试图案");
    row("event 19 test off", listenerEvent("test_close"), "its own image", "自身图像");
    row("event 19 upload on", listenerEvent("ftp_open"), "uploads raw", "通过FTP上传");
    row("event 19 upload off", listenerEvent("ftp_close"), "no longer uploads", "不再通过FTP");
    row(
        "line lost that a worker causes",
        [=](long int id) { std::thread([=] { emit bus->SigVexaEventUpdateROI(id); }).join(); },
        "The region in which codes", "读码区域");
}

void WorkbenchEventsTest::eventsLeaveALine()
{
    QFETCH(Event, event);
    QFETCH(QString, line);
    QFETCH(QString, chinese);
    w().openAndWait(FIRST);
    const long int cameraId = w().session(FIRST)->cameraId();
    const auto lastLine = [this] { return w().messages().section('\n', -1); };
    const QString name = w().session(FIRST)->displayName() + ": ";
    const int lines = w().messages().count('\n');
    event(cameraId);
    QTRY_COMPARE(w().messages().count('\n'), lines + 1);
    QVERIFY2(lastLine().contains(line) && lastLine().contains(name), qPrintable(lastLine()));
    w().window().setLanguage("CH");
    event(cameraId);
    QTRY_VERIFY2(lastLine().contains(chinese) && lastLine().contains(name), qPrintable(lastLine()));
}

void WorkbenchEventsTest::loadedParametersAreReadAgain()
{
    w().openAndWait(FIRST);
    w().forgetUpdates();
    w().control(FIRST).setLogging(true);
    emit QVexaEventBus::Instance()->SigVexaEventLoadParameters();
    QVERIFY(w().control(FIRST).accessLog().isEmpty()); // never inside of the command
    QTRY_VERIFY(w().control(FIRST).accessLog().size() > 100);
    QVERIFY(w().messages().contains("Parameters were loaded"));
}

void WorkbenchEventsTest::listFollowsNameAndMark()
{
    w().openAndWait(FIRST);
    w().openAndWait(SECOND);
    const auto text = [this](const QString &id) { return w().item(id)->text(0); };
    const long int cameraId = w().session(FIRST)->cameraId();
    const QString old = w().session(FIRST)->displayName();
    QCOMPARE(text(FIRST), FIRST + "\n" + old);
    COMMONINTERFACE::AddCurrentCamModified(old);
    QCOMPARE(text(FIRST), FIRST + " *\n" + old);
    QVERIFY2(!text(SECOND).contains('*'), "the other camera is marked");
    QTaskManager::Instance()->GetTaskByIDEx(cameraId)->_SetCameraName("Gate 7");
    COMMONINTERFACE::CamModifedNameChanged(old, "Gate 7");
    emit QVexaEventBus::Instance()->SigVexaEventUpdateCameraStatus(cameraId);
    QCOMPARE(text(FIRST), FIRST + " *\nGate 7");
    COMMONINTERFACE::RemoveCurrentCamModified("Gate 7");
    QCOMPARE(text(FIRST), FIRST + "\nGate 7");
    w().window().closeDevice(FIRST);
    QCOMPARE(text(FIRST), FIRST);
}

void WorkbenchEventsTest::closingAsksForUnsavedChanges_data()
{
    QTest::addColumn<bool>("wholeWindow");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<int>("openAfterwards");
    QTest::newRow("camera closed against the answer") << false << false << 2;
    QTest::newRow("answer forgotten") << false << true << 1;
    QTest::newRow("window closed against the answer") << true << false << 2;
    QTest::newRow("window kept against the answer") << true << true << 0;
}

void WorkbenchEventsTest::closingAsksForUnsavedChanges()
{
    QFETCH(bool, wholeWindow);
    QFETCH(bool, yes);
    QFETCH(int, openAfterwards);
    w().openAndWait(SECOND);
    w().openAndWait(FIRST);
    const QString name = w().session(FIRST)->displayName();
    COMMONINTERFACE::AddCurrentCamModified(name);
    QString asked;
    answerNextBox(&w().window(), yes, &asked);
    if (wholeWindow) {
        w().window().close();
    } else {
        w().click("CloseButton");
    }
    QVERIFY2(asked.contains(name), qPrintable(asked));
    QCOMPARE(int(QTaskManager::Instance()->GetTaskCount()), openAfterwards);
    QCOMPARE(w().window().isVisible(), !(wholeWindow && yes));
    QCOMPARE(ShellHost::instance()->modifiedCameras().contains(name), !yes);
    if (!yes) {
        COMMONINTERFACE::RemoveCurrentCamModified(name);
    }
}

QTEST_MAIN(WorkbenchEventsTest)
#include "tst_workbench_events.moc"
