// Before Qt's keywords: GLib has members of the same names.
// clang-format off
#include <arv.h>
// clang-format on

#include "ControlKit/CustomLoadingDialog.h"
#include "ControlKit/CustomMessageBox.h"
#include "ControlKit/CustomPushButton.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/DataTable.h"
#include "tests/tree/WriteFixture.h"
#include "view/VexaFeatureTreeView.h"
#include "view/VexaPropertyTreeDelegate.h"

#include <QPointer>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QThread>
#include <QTimer>
#include <QtTest>

namespace {

constexpr int REFRESH_DELAY_MS = 200;
constexpr int ACCESS_DENIED = ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
const char *const RECOVER =
    "box Notice|Restore the factory settings? All present parameters will be lost.";
const char *const RECOVER_DEFAULT =
    "box Notice|Restore the default parameters? Unsaved changes will be lost.";
const char *const DELETE_SET = "box Notice|Delete the current configuration?";
const char *const CAUTION =
    "box |This restores a user set and replaces the present parameters. Continue?";
const char *const REBOOTING = "box |The camera is restarting.";
const char *const LOADED = "bus SigVexaEventLoadParameters";

QString failureBox(const char *name)
{
    return QStringLiteral("box The feature could not be set.|Node '%1' was not executed. @/"
                          "0x90006104: The node is not accessible in its present state.")
        .arg(name);
}

QString failurePrompt(const char *name)
{
    return QStringLiteral("prompt 2 |Node '%1' was not executed. @").arg(name);
}

QString ran(const char *name)
{
    return QStringLiteral("critical NodeName:%1, [CameraID:#]").arg(name);
}

/// Boxes that are up at one time, and how often a loading dialog came up.
class ScreenWatch : public QObject
{
public:
    ScreenWatch() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = event->type() == QEvent::Show ? qobject_cast<QWidget *>(watched) : nullptr;
        if (widget && widget->isWindow()) {
            m_nLoadings += widget->windowTitle() == QLatin1String("Updating the features...");
            int boxes = 0;
            const QWidgetList windows = QApplication::topLevelWidgets();
            for (QWidget *window : windows) {
                boxes += qobject_cast<CustomMessageBox *>(window)
                    && (window->isVisible() || window == widget);
            }
            m_nMostBoxes = qMax(m_nMostBoxes, boxes);
        }
        return QObject::eventFilter(watched, event);
    }
    int m_nLoadings = 0;
    int m_nMostBoxes = 0;
};

class CommandFixture : public WriteFixture
{
public:
    explicit CommandFixture(const QString &deviceId = QStringLiteral("code-reader"))
        : WriteFixture(deviceId)
    {
        control().setQuiet(true);
        control().setRestartTime(50);
        tree().findChild<VexaPropertyComboBox *>()->setCurrentIndex(0); // all rows
        module().mainWidget().resize(900, 700);
        module().mainWidget().show();
    }
    QPushButton *button(const QString &name)
    {
        VexaFeatureTreeView *view = tree().treeView();
        return qobject_cast<QPushButton *>(view->indexWidget(view->indexOfItem(item(name), 1)));
    }
    /// A press with the mouse on the button in its row, however soon after another one.
    bool press(const QString &name)
    {
        VexaFeatureTreeView *view = tree().treeView();
        QPushButton *target = button(name);
        const auto isReady = [&] {
            view->scrollTo(view->indexOfItem(item(name), 0), QAbstractItemView::PositionAtCenter);
            view->flushEditorUpdates();
            return target->isVisible() && target->isEnabled();
        };
        if (!target || !QTest::qWaitFor(isReady)) {
            return false;
        }
        static_cast<CustomPushButton *>(target)->cSetControlClickEvent(0);
        QTest::mouseClick(target, Qt::LeftButton);
        return true;
    }
    bool isTimerActive(int interval)
    {
        const auto timers = tree().findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        return std::any_of(timers.cbegin(), timers.cend(), [interval](const QTimer *timer) {
            return timer->isActive() && (interval < 0 || timer->interval() == interval);
        });
    }
    bool isRefreshDue() { return isTimerActive(REFRESH_DELAY_MS); }
    /// Of the register of a feature, as the description has it.
    quint64 addressOf(const QString &name)
    {
        const QRegularExpression row(
            QStringLiteral("Name=\"%1Reg\".*?<Address>(0x)?([0-9A-Fa-f]+)<").arg(name),
            QRegularExpression::DotMatchesEverythingOption);
        const QRegularExpressionMatch match = row.match(QString::fromUtf8(control().description()));
        return match.captured(2).toULongLong(nullptr, match.captured(1).isEmpty() ? 10 : 16);
    }
    void setFailing(const QString &name, bool on)
    {
        control().setFailing(addressOf(name), on ? ACCESS_DENIED : 0);
    }
    QStringList heardOfCommand()
    {
        return takeHeard().filter(QRegularExpression(QStringLiteral(
            "^(box|prompt|critical NodeName|bus SigVexaEventLoadParameters|message)")));
    }
    int failedWrites()
    {
        const QVector<SimulatorAccess> writes = writesOf(camera());
        return int(
            std::count_if(writes.cbegin(), writes.cend(), std::mem_fn(&SimulatorAccess::failed)));
    }
};

} // namespace

/// Every command that is special, seen from its button, the device, the boxes, the timers and the log.
class tst_commands : public QObject
{
    Q_OBJECT
private slots:
    void cleanupTestCase() { m_shared.reset(); }
    void pressed_data();
    void pressed();
    void answers();
    void loadWhileADialogIsUp();
    void rowsMadeAnewUnderALoad();
    void autoTrigger();
    void tuneDataAreHandedOn();
    void manyClicks();
    void whileAQuestionIsOpen();
    void resets();
    void loadingDialogOfFrameGrabbers();

private:
    SharedFixture<CommandFixture> m_shared;
};

void tst_commands::pressed_data()
{
    // "answer" to the box; or the device fails.
    const DataTable<QString, QString, QStringList, int> table("name", "answer", "heard",
                                                              "loadings");
    const auto row = [&table](const char *tag, const char *name, const char *answer,
                              QStringList heard, int loadings = 0) {
        heard += qstrcmp(answer, "yes") == 0 ? QStringList(ran(name)) : QStringList();
        table(tag, name, answer, heard, loadings);
    };
    const char *const defaults = "UserSetRecoverDefault";
    row("deletion declined", "UserSetDelete", "no", {DELETE_SET});
    row("recovery of all sets declined", "UserSetRecoverFactory", "no", {RECOVER});
    row("factory recovery declined", "RecoverFactory", "no", {RECOVER});
    row("warning declined", "UserSetRecover", "no", {CAUTION});
    row("defaults declined show no dialog", defaults, "no", {RECOVER_DEFAULT});
    row("plain command refused", "StatisticsReset", "fails", {failureBox("StatisticsReset")});
    row("addition refused tells twice", "UserSetAdd", "fails",
        {failureBox("UserSetAdd"), failurePrompt("UserSetAdd")});
    row("load refused closes its dialog", "UserSetLoad", "fails", {failureBox("UserSetLoad")}, 1);
    row("defaults refused close their dialog", defaults, "fails",
        {RECOVER_DEFAULT, failureBox(defaults)}, 1);
    row("reset refused stops nothing", "DeviceReset", "fails", {failureBox("DeviceReset")});
    row("plain command", "StatisticsReset", "yes", {});
    row("focus at rest", "FocusMode", "yes", {});
    row("user set saved", "UserSetSave", "yes", {});
    row("all user sets recovered after a yes", "UserSetRecoverFactory", "yes", {RECOVER});
    row("user set added", "UserSetAdd", "yes", {});
    row("user set deleted after a yes", "UserSetDelete", "yes", {DELETE_SET});
    row("recovered after the warning", "UserSetRecover", "yes", {CAUTION});
    row("partly recovered after the warning", "UserSetRecoverPartly", "yes", {CAUTION});
    row("loading tells the client", "UserSetLoad", "yes", {LOADED}, 1);
    row("defaults recovered and loaded", defaults, "yes and load",
        {RECOVER_DEFAULT, LOADED, ran(defaults), ran("UserSetLoad")}, 1);
    row("start without a stop before", "AcquisitionStart", "yes", {});
}

void tst_commands::pressed()
{
    QFETCH(QString, name);
    QFETCH(QString, answer);
    QFETCH(QStringList, heard);
    QFETCH(int, loadings);
    CommandFixture &f = m_shared.get();
    f.setFailing(name, answer == "fails");
    f.m_bAnswersYes = answer != "no";
    ScreenWatch watch;
    QVERIFY(f.press(name));
    const bool isRefreshDue = f.isRefreshDue();
    QTest::qWait(0);
    QTRY_VERIFY(!f.isRefreshDue() && !CustomLoadingDialog::isLoading(1));
    QCOMPARE(f.heardOfCommand(), heard);
    const int commandsRun = heard.filter("critical ").size();
    QCOMPARE(isRefreshDue, commandsRun > 0);
    QCOMPARE(f.accessesOfWrites(), answer == "fails" ? 1 : commandsRun);
    QCOMPARE(watch.m_nLoadings, loadings);
    QCOMPARE(watch.m_nMostBoxes, heard.filter("box ").isEmpty() ? 0 : 1);
    f.setFailing(name, false);
    f.m_bAnswersYes = true;
}

void tst_commands::answers()
{
    static const struct
    {
        const char *fault;
        const char *step;
        const char *name;
        bool answer;
        bool writes;
    } rows[] = {
        {"first start after a stop", "stop", "AcquisitionStart", false, false},
        {"second start after a stop", "stop swallowed", "AcquisitionStart", true, true},
        {"the client's start takes the trap away", "stop start", "AcquisitionStart", true, true},
        {"stop swallows no other command", "stop", "StatisticsReset", true, true},
        {"filter rules are no command of the device", "", "Custom_RegularExpressionFilterRules",
         true, false},
        {"focus under way", "focus", "FocusMode", false, false},
        {"focus whose state cannot be read", "focus unreadable", "FocusMode", true, true},
        {"tune stopped by the client", "tune", "SmartTuneStop", true, true},
        {"no name", "", "", false, false},
        {"no task", "close", "StatisticsReset", false, false},
    };
    CommandFixture &f = m_shared.get();
    for (const auto &row : rows) {
        const QString step = row.step;
        QTRY_VERIFY2(!f.isRefreshDue(), row.fault);
        if (step.startsWith("stop")) {
            f.tree().OnCameraStopShot();
        }
        if (step == "stop start") {
            f.tree().OnCameraStartShot();
        } else if (step == "stop swallowed") {
            QVERIFY(!f.write(row.name, QVariant()));
        } else if (step == "focus") {
            f.control().poke(f.addressOf("AutoFocusStat"), QByteArray(4, '\0'));
        } else if (step == "close") {
            f.module().host().closeCamera(f.camera().id);
        }
        f.setFailing("AutoFocusStat", step == "focus unreadable");
        f.takeHeard();
        f.control().clearAccessLog();
        if (step == "tune") {
            f.tree().StopSmartTune(row.name);
        } else {
            QVERIFY2(f.tree().setFeatureValue("Command", row.name, QVariant()) == row.answer,
                     row.fault);
        }
        QVERIFY2(f.accessesOfWrites() == int(row.writes), row.fault);
        QVERIFY2(f.isRefreshDue() == row.writes, row.fault);
        QCOMPARE(f.heardOfCommand(), row.writes ? QStringList(ran(row.name)) : QStringList());
    }
    m_shared.reset();
}

void tst_commands::loadWhileADialogIsUp()
{
    CommandFixture &f = m_shared.get();
    ScreenWatch watch;
    QVERIFY(f.write("CommunicationProtocols", 3));
    QVERIFY(CustomLoadingDialog::isLoading(1));
    QVERIFY(f.write("UserSetLoad", QVariant()));
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    QCOMPARE(watch.m_nLoadings, 1);
}

/// The caller's item is gone when the command has run.
void tst_commands::rowsMadeAnewUnderALoad()
{
    CommandFixture &f = m_shared.get();
    VexaPropertyTreeItem *before = f.item("UserSetLoad");
    bool madeAnew = false;
    QTimer::singleShot(0, &f.tree(), [&] {
        f.tree().OnResartCameraOpen(4);
        madeAnew = true;
    });
    QVERIFY(f.tree().setFeatureValue(before, QVariant(), true, false));
    QVERIFY(madeAnew);
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(1));
    QCOMPARE(f.heardOfCommand(), QStringList({LOADED, ran("UserSetLoad")}));
}

void tst_commands::autoTrigger()
{
    CommandFixture &f = m_shared.fresh();
    QVERIFY(!f.isTimerActive(0) && !f.isTimerActive(7));
    f.tree().SetAutoSoftwareTrig(true, 0);
    QVERIFY(f.isTimerActive(0));
    f.tree().SetAutoSoftwareTrig(true, 7);
    f.control().clearAccessLog();
    QTRY_VERIFY(f.accessesOfWrites() >= 3);
    f.setFailing("TriggerSoftware", true);
    QTRY_VERIFY(f.failedWrites() >= 2);
    f.tree().SetAutoSoftwareTrig(false, 0);
    QVERIFY(!f.isTimerActive(7) && !f.isRefreshDue());
    QCOMPARE(f.heardOfCommand(), QStringList());
    f.tree().SetAutoSoftwareTrig(true, 4000000000U);
    QVERIFY(f.isTimerActive(INT_MAX));
    f.tree().SetAutoSoftwareTrig(false, 0);
}

void tst_commands::tuneDataAreHandedOn()
{
    CommandFixture &f = m_shared.get();
    QSignalSpy shown(&f.tree(), &VexaFeatureTree::SigShowSmartTune);
    f.tree().ShowSmartTune("SmartTuneProgress", 40);
    QCOMPARE(shown.value(0),
             (QList<QVariant>{"SmartTuneProgress", QVariant::fromValue<QVariant>(40)}));
    QSignalSpy read(&f.tree(), &VexaFeatureTree::SigGetFeatureValueByThread);
    f.tree().RefreshFeatures();
    QTRY_VERIFY(std::any_of(read.cbegin(), read.cend(), [](const QList<QVariant> &arguments) {
        return arguments.first() == QLatin1String("SmartTuneProgress");
    }));
}

void tst_commands::manyClicks()
{
    static const char *const commands[] = {
        "StatisticsReset", "UserSetAdd",     "UserSetDelete",         "UserSetLoad",
        "UserSetSave",     "UserSetRecover", "UserSetRecoverDefault", "UserSetRecoverFactory",
        "LightingAllOff"};
    CommandFixture &f = m_shared.get();
    QRandomGenerator random(20260101);
    ScreenWatch watch;
    int failures = 0;
    for (int click = 0; click < 150; ++click) {
        const char *const command = commands[random.bounded(int(std::size(commands)))];
        f.setFailing(command, random.bounded(3) == 0);
        f.m_bAnswersYes = random.bounded(4) != 0;
        f.control().clearAccessLog();
        QPushButton *target = f.button(command);
        QVERIFY(target);
        target->setEnabled(true);
        target->click();
        const int failed = f.failedWrites();
        f.setFailing(command, false);
        failures += failed;
        const QStringList heard = f.heardOfCommand();
        QVERIFY2(heard.filter("box ").filter("was not executed").size() == failed,
                 qPrintable(heard.join('\n')));
        QCOMPARE(heard.filter("prompt ").size(), qstrcmp(command, "UserSetAdd") == 0 ? failed : 0);
        if (random.bounded(2) == 0) {
            QCoreApplication::processEvents();
        }
    }
    QVERIFY(failures > 15);
    QCOMPARE(watch.m_nMostBoxes, 1);
    f.m_bAnswersYes = true;
    QTRY_VERIFY(!f.isRefreshDue() && !CustomLoadingDialog::isLoading(1));
}

void tst_commands::whileAQuestionIsOpen()
{
    const QStringList deleted{DELETE_SET, ran("UserSetDelete")};
    const struct
    {
        const char *meanwhile; ///< another command, or who goes
        QStringList heard;
    } rows[] = {{"UserSetDelete", deleted}, // the same
                {"UserSetRecoverFactory", deleted}, // a second question
                {"UserSetRecover", deleted}, // a warning
                {"DoesNotExist", // its failure is shown behind the question
                 {DELETE_SET,
                  "box The feature could not be set.|Node 'DoesNotExist' was not executed. @/"
                  "0x90006203: The node does not exist or is of another kind.",
                  ran("UserSetDelete")}},
                {"the tree goes", {DELETE_SET}},
                {"the camera goes", {DELETE_SET}}};
    for (const auto &row : rows) {
        const QString meanwhile = row.meanwhile;
        const bool gone = meanwhile.endsWith(" goes");
        const bool treeGoes = meanwhile == "the tree goes";
        CommandFixture &f = m_shared.get();
        QTRY_VERIFY(!f.isRefreshDue());
        QVERIFY(f.setOnDevice("UserSetAdd", 0));
        f.control().clearAccessLog();
        f.takeHeard();
        ScreenWatch watch;
        const QPointer<VexaFeatureTree> tree = &f.tree();
        f.m_whileBoxIsUp = [&] {
            if (treeGoes) {
                f.module().close(f.camera());
                QVERIFY(!QApplication::activeModalWidget()); // nobody needs to answer
            } else if (gone) {
                f.module().host().closeCamera(f.camera().id);
            } else {
                QVERIFY(!f.tree().setFeatureValue("Command", meanwhile, QVariant()));
            }
        };
        QVERIFY2(tree->setFeatureValue("Command", "UserSetDelete", QVariant()) != gone,
                 row.meanwhile);
        QVERIFY2(f.accessesOfWrites() == int(!gone), row.meanwhile);
        QVERIFY2(watch.m_nMostBoxes == 1, row.meanwhile);
        QVERIFY2(!CustomLoadingDialog::isLoading(1), row.meanwhile);
        QStringList lines = f.heardOfCommand();
        lines.removeAll("message ready for delete");
        QCOMPARE(lines, row.heard);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QTRY_COMPARE(tree.isNull(), treeGoes);
        if (gone) {
            m_shared.reset();
        }
    }
}

void tst_commands::resets()
{
    const struct
    {
        const char *road; ///< a button, or the event of an import on another thread
        QStringList heard;
    } rows[] = {{"DeviceReset", {REBOOTING, ran("DeviceReset")}}, // asks nothing
                {"RecoverFactory", {RECOVER, REBOOTING, ran("RecoverFactory")}},
                {"event", {REBOOTING, ran("DeviceReset")}}};
    for (const auto &row : rows) {
        CommandFixture &f = m_shared.fresh();
        VexaFeatureTreeView *view = f.tree().treeView();
        f.tree().OnAddValueChangedNodes({"Width"});
        if (qstrcmp(row.road, "event") != 0) {
            QVERIFY2(f.press(row.road), row.road);
        } else {
            long int id = f.camera().id + 1;
            const auto tell = [&id] {
                VexaListenTools::instance()->notifyListeners(VEXA_EVENT_RESET_DEVICE, &id);
            };
            tell();
            QVERIFY(f.accessesOfWrites() == 0 && f.isTimerActive(-1)); // it is another camera's
            id = f.camera().id;
            const std::unique_ptr<QThread> thread(QThread::create(tell));
            thread->start();
            QVERIFY(thread->wait(QDeadlineTimer(5000)));
            id = 0; // it was the call's
            QCOMPARE(f.accessesOfWrites(), 0); // not on that thread
            QCoreApplication::sendPostedEvents(&f.tree(), QEvent::MetaCall);
        }
        QVERIFY2(f.accessesOfWrites() == 1, row.road);
        QVERIFY2(!f.isTimerActive(-1), row.road);
        QTest::qWait(0);
        QCOMPARE(f.heardOfCommand(), row.heard);
        QVERIFY2(!CustomLoadingDialog::isLoading(1), row.road);
        QVERIFY2(!view->propertyDelegate()->isEditorsEnabled(), row.road);
        view->flushEditorUpdates();
        for (const char *name : {"StatisticsReset", "ExposureTime", "TriggerMode"}) {
            QVERIFY2(!view->indexWidget(view->indexOfItem(f.item(name), 1))->isEnabled(), row.road);
        }
    }
    m_shared.reset();
}

void tst_commands::loadingDialogOfFrameGrabbers()
{
    m_shared.reset();
    CommandFixture f("grabber-camera");
    const int key = int(f.camera().id) + 3;
    f.control().setLatency(50);
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(key));
    QVERIFY(!f.write("Gain", 1e30));
    QVERIFY(!CustomLoadingDialog::isLoading(key));
    QVERIFY(f.write("Gain", 2.0));
    QVERIFY(CustomLoadingDialog::isLoading(key));
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(key));
    QVERIFY(f.write("UserSetLoad", QVariant()));
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(key));
    QVERIFY(f.write("DeviceReset", QVariant()));
    QVERIFY(!CustomLoadingDialog::isLoading(key));
}

QTEST_MAIN(tst_commands)
#include "tst_commands.moc"
