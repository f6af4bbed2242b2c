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
#include "tests/support/WhenOpen.h"

#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include <functional>
#include <thread>

using Event = std::function<void(long int cameraId)>;

/// What the window answers to the module's events: lines of the log, marks in the list, a refresh.
class WorkbenchEventsTest : public WindowTest
{
    Q_OBJECT
private slots:
    void eventsLeaveALine();
    void loadedParametersAreReadAgain();
    void listFollowsNameAndMark();
    void closingAsksForUnsavedChanges();
};

namespace {

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

/// Answers the next question; `seen` gets what was asked.
void answerNextBox(bool yes, QString *seen)
{
    whenOpen<CustomMessageBox>([=](CustomMessageBox *box) {
        *seen = box->cContent();
        for (QPushButton *button : box->findChildren<QPushButton *>()) {
            if (button->text() == (yes ? "Yes" : "No")) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
    });
}

} // namespace

void WorkbenchEventsTest::eventsLeaveALine()
{
    QVexaEventBus *bus = QVexaEventBus::Instance();
    const auto region = [=](long int id) { emit bus->SigVexaEventUpdateROI(id); };
    const auto stations = [=](long int id) { emit bus->SigVexaEventUpdateMainSub(id, true); };
    const auto tune = [=](long int) { emit bus->SigVexaEventStartSmartTune(true); };
    const auto adapt = [=](long int) { emit bus->SigVexaEventStartSmartTune(false); };
    const auto worker = [=](long int id) { std::thread(region, id).join(); };
    const struct
    {
        Event event;
        const char *line;
        const char *chinese;
    } rows[] = {
        {region, "The region in which codes", "读码区域"},
        {stations, "Main and sub stations", "主从站"},
        {tune, "Smart tune", "智能调节"},
        {adapt, "The adaptation", "自适应"},
        {imageEvent("test_open"), "test pattern on", "已开启"},
        {imageEvent("ftp_close"), "test images off", "已关闭"},
        {listenerEvent(""), "polling or protocol", "通信协议"},
        {listenerEvent("test_open"), "sends the test pattern", "以测试图案"},
        {worker, "The region in which codes", "读码区域"},
    };
    w().openAndWait(FIRST);
    const long int cameraId = w().session(FIRST)->cameraId();
    const auto lastLine = [this] { return w().messages().section('\n', -1); };
    const QString name = w().session(FIRST)->displayName() + ": ";
    for (const bool english : {true, false}) {
        w().window().setLanguage(english ? "ENG" : "CH");
        for (const auto &row : rows) {
            const int lines = w().messages().count('\n');
            row.event(cameraId);
            QTRY_COMPARE(w().messages().count('\n'), lines + 1);
            QVERIFY2(lastLine().contains(english ? row.line : row.chinese)
                         && lastLine().contains(name),
                     qPrintable(lastLine()));
        }
    }
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

void WorkbenchEventsTest::closingAsksForUnsavedChanges()
{
    static const struct
    {
        bool wholeWindow;
        bool yes;
        unsigned int openAfterwards;
    } rows[] = {{true, false, 2}, {false, false, 2}, {false, true, 1}, {true, true, 0}};
    w().openAndWait(SECOND);
    w().openAndWait(FIRST);
    const QString name = w().session(FIRST)->displayName();
    const QString second = w().session(SECOND)->displayName();
    for (const auto &row : rows) {
        const QString modified = row.openAfterwards > 0 ? name : second;
        COMMONINTERFACE::AddCurrentCamModified(modified);
        QString asked;
        answerNextBox(row.yes, &asked);
        if (row.wholeWindow) {
            w().window().close();
        } else {
            w().click("CloseButton");
        }
        QVERIFY2(asked.contains(modified), qPrintable(asked));
        QCOMPARE(QTaskManager::Instance()->GetTaskCount(), row.openAfterwards);
        QCOMPARE(w().window().isVisible(), !(row.wholeWindow && row.yes));
        QCOMPARE(ShellHost::instance()->modifiedCameras().contains(modified), !row.yes);
    }
}

QTEST_MAIN(WorkbenchEventsTest)
#include "tst_workbench_events.moc"
