// Before Qt's keywords: GLib has members of the same names.
// clang-format off
#include <arv.h>
// clang-format on

#include "ControlKit/CustomLoadingDialog.h"
#include "ControlKit/CustomMessageBox.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "model/VexaPropertyTreeItem.h"
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

using Steps = QVector<QPair<QString, QVariant>>; ///< feature and value; a command takes any value
Q_DECLARE_METATYPE(Steps)

namespace {

constexpr int REFRESH_DELAY_MS = 200;
constexpr int ACCESS_DENIED = ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
const char *const RECOVER =
    "box Prompt|Restore the factory settings? All present parameters will be lost.";
const char *const RECOVER_DEFAULT =
    "box Prompt|Restore the default parameters? Unsaved changes will be lost.";
const char *const DELETE_SET = "box Prompt|Delete the current configuration?";
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
    /// A press with the mouse on the button in its row.
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
        const QVector<SimulatorAccess> log = control().accessLog();
        return int(std::count_if(log.cbegin(), log.cend(), [](const SimulatorAccess &access) {
            return access.failed && access.kind == SimulatorAccess::Write;
        }));
    }
};

} // namespace

/// Every command that is special, seen from its button, the device, the boxes, the timers and the log.
class tst_commands : public QObject
{
    Q_OBJECT
private slots:
    void pressed_data();
    void pressed();
    void resets_data();
    void resets();
    void answers_data();
    void answers();
    void whileAQuestionIsOpen_data();
    void whileAQuestionIsOpen();
    void treeRemovedUnderAQuestion();
    void rowsMadeAnewUnderALoad();
    void loadWhileADialogIsUp();
    void loadingDialogOfFrameGrabbers();
    void autoTrigger();
    void tuneDataAreHandedOn();
    void thousandClicks();
};

void tst_commands::pressed_data()
{
    QTest::addColumn<Steps>("before"); // on the device, past the tree
    QTest::addColumn<bool>("fails"); // the device refuses the command
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<int>("writes");
    QTest::addColumn<int>("loadings");
    QTest::addColumn<bool>("refresh");
    QTest::addColumn<QStringList>("heard");
    const auto taken = [](const char *tag, const char *name, QStringList heard, int loadings = 0,
                          const Steps &before = {}, int writes = 1) {
        QTest::newRow(tag) << before << false << name << true << writes << loadings << true
                           << (heard << ran(name));
    };
    const auto declined = [](const char *tag, const char *name, const char *question) {
        QTest::newRow(tag) << Steps() << false << name << false << 0 << 0 << false
                           << QStringList{question};
    };
    const auto refused = [](const char *tag, const char *name, const QStringList &heard,
                            int loadings = 0) {
        QTest::newRow(tag) << Steps() << true << name << true << 1 << loadings << false << heard;
    };
    const Steps secondSet{{"UserSetAdd", 0}};
    taken("plain command", "StatisticsReset", {});
    taken("start without a stop before", "AcquisitionStart", {});
    taken("focus at rest", "FocusMode", {});
    taken("user set saved", "UserSetSave", {});
    taken("user set added", "UserSetAdd", {});
    taken("user set deleted after a yes", "UserSetDelete", {DELETE_SET}, 0, secondSet);
    taken("all user sets recovered after a yes", "UserSetRecoverFactory", {RECOVER});
    taken("recovered after the warning", "UserSetRecover", {CAUTION});
    taken("partly recovered after the warning", "UserSetRecoverPartly", {CAUTION});
    taken("loading tells the client", "UserSetLoad", {LOADED}, 1);
    // The defaults are loaded behind their recovery.
    QTest::newRow("defaults recovered and loaded")
        << Steps() << false << "UserSetRecoverDefault" << true << 2 << 1 << true
        << QStringList{RECOVER_DEFAULT, LOADED, ran("UserSetRecoverDefault"), ran("UserSetLoad")};
    declined("deletion declined", "UserSetDelete", DELETE_SET);
    declined("recovery of all sets declined", "UserSetRecoverFactory", RECOVER);
    declined("factory recovery declined", "RecoverFactory", RECOVER);
    declined("defaults declined show no dialog", "UserSetRecoverDefault", RECOVER_DEFAULT);
    declined("warning declined", "UserSetRecover", CAUTION);
    declined("partial recovery declined", "UserSetRecoverPartly", CAUTION);
    refused("plain command refused", "StatisticsReset", {failureBox("StatisticsReset")});
    refused("load refused closes its dialog", "UserSetLoad", {failureBox("UserSetLoad")}, 1);
    refused("defaults refused close their dialog", "UserSetRecoverDefault",
            {RECOVER_DEFAULT, failureBox("UserSetRecoverDefault")}, 1);
    refused("addition refused tells twice", "UserSetAdd",
            {failureBox("UserSetAdd"), failurePrompt("UserSetAdd")});
    refused("reset refused stops nothing", "DeviceReset", {failureBox("DeviceReset")});
}

void tst_commands::pressed()
{
    QFETCH(Steps, before);
    QFETCH(bool, fails);
    QFETCH(QString, name);
    QFETCH(bool, yes);
    QFETCH(int, writes);
    QFETCH(int, loadings);
    QFETCH(bool, refresh);
    QFETCH(QStringList, heard);
    CommandFixture f;
    for (const auto &step : qAsConst(before)) {
        QVERIFY(f.setOnDevice(step.first, step.second));
    }
    if (fails) {
        f.setFailing(name, true);
    }
    f.control().clearAccessLog();
    f.takeHeard();
    f.m_bAnswersYes = yes;
    ScreenWatch watch;
    QVERIFY(f.press(name));
    QCOMPARE(f.isRefreshDue(), refresh);
    QCOMPARE(f.accessesOfWrites(), writes);
    QTest::qWait(0);
    QTRY_VERIFY(!f.isRefreshDue() && !CustomLoadingDialog::isLoading(1));
    QCOMPARE(f.heardOfCommand(), heard);
    QCOMPARE(watch.m_nLoadings, loadings);
    QCOMPARE(watch.m_nMostBoxes, heard.filter(QStringLiteral("box ")).isEmpty() ? 0 : 1);
}

void tst_commands::resets_data()
{
    QTest::addColumn<QString>("road"); // a button, or the event
    QTest::addColumn<QStringList>("heard");
    QTest::newRow("reset asks nothing")
        << "DeviceReset" << QStringList{REBOOTING, ran("DeviceReset")};
    QTest::newRow("factory recovery after a yes")
        << "RecoverFactory" << QStringList{RECOVER, REBOOTING, ran("RecoverFactory")};
    QTest::newRow("after an import") << "event" << QStringList{REBOOTING, ran("DeviceReset")};
    QTest::newRow("import into another camera") << "other" << QStringList();
    QTest::newRow("told on another thread") << "job" << QStringList{REBOOTING, ran("DeviceReset")};
}

void tst_commands::resets()
{
    QFETCH(QString, road);
    QFETCH(QStringList, heard);
    CommandFixture f;
    const bool concerned = road != QLatin1String("other");
    QVERIFY(f.isTimerActive(-1));
    f.tree().OnAddValueChangedNodes({"Width"});
    if (road.size() > 5) {
        QVERIFY(f.press(road));
    } else {
        long int id = f.camera().id + (concerned ? 0 : 1);
        const auto tell = [&id] {
            VexaListenTools::instance()->notifyListeners(VEXA_EVENT_RESET_DEVICE, &id);
        };
        if (road == QLatin1String("job")) {
            const std::unique_ptr<QThread> thread(QThread::create(tell));
            thread->start();
            QVERIFY(thread->wait(QDeadlineTimer(5000)));
            id = 0; // it was the call's
            QCOMPARE(f.accessesOfWrites(), 0); // not on that thread
            QCoreApplication::sendPostedEvents(&f.tree(), QEvent::MetaCall);
        } else {
            tell();
        }
    }
    QCOMPARE(f.accessesOfWrites(), concerned ? 1 : 0);
    QCOMPARE(f.isTimerActive(-1), !concerned);
    QTest::qWait(0);
    QCOMPARE(f.heardOfCommand(), heard);
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    VexaFeatureTreeView *view = f.tree().treeView();
    QCOMPARE(view->propertyDelegate()->isEditorsEnabled(), !concerned);
    view->flushEditorUpdates();
    for (const char *name : {"StatisticsReset", "ExposureTime", "TriggerMode"}) {
        QWidget *editor = view->indexWidget(view->indexOfItem(f.item(name), 1));
        QCOMPARE(editor->isEnabled(), !concerned);
    }
}

void tst_commands::answers_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<int>("writes");
    QTest::addColumn<QStringList>("heard");
    const QStringList start{ran("AcquisitionStart")};
    QTest::newRow("first start after a stop") << "stop"
                                              << "AcquisitionStart" << false << 0 << QStringList();
    QTest::newRow("second start after a stop") << "stop swallowed"
                                               << "AcquisitionStart" << true << 1 << start;
    QTest::newRow("the client's start takes the trap away")
        << "stop start"
        << "AcquisitionStart" << true << 1 << start;
    QTest::newRow("stop swallows no other command")
        << "stop"
        << "StatisticsReset" << true << 1 << QStringList{ran("StatisticsReset")};
    QTest::newRow("filter rules are no command of the device")
        << ""
        << "Custom_RegularExpressionFilterRules" << true << 0 << QStringList();
    QTest::newRow("focus under way") << "focus"
                                     << "FocusMode" << false << 0 << QStringList();
    QTest::newRow("focus whose state cannot be read")
        << "focus unreadable"
        << "FocusMode" << true << 1 << QStringList{ran("FocusMode")};
    QTest::newRow("no name") << ""
                             << "" << false << 0 << QStringList();
    QTest::newRow("no task") << "close"
                             << "StatisticsReset" << false << 0 << QStringList();
    QTest::newRow("going tree") << "going"
                                << "StatisticsReset" << false << 0 << QStringList();
    QTest::newRow("tune stopped by the client")
        << "tune"
        << "SmartTuneStop" << true << 1 << QStringList{ran("SmartTuneStop")};
}

void tst_commands::answers()
{
    QFETCH(QString, step);
    QFETCH(QString, name);
    QFETCH(bool, answer);
    QFETCH(int, writes);
    QFETCH(QStringList, heard);
    CommandFixture f;
    SimulatorControl &control = f.control();
    if (step.startsWith(QLatin1String("stop"))) {
        f.tree().OnCameraStopShot();
    }
    if (step == QLatin1String("stop start")) {
        f.tree().OnCameraStartShot();
    } else if (step == QLatin1String("stop swallowed")) {
        QVERIFY(!f.write(name, QVariant()));
    } else if (step.startsWith(QLatin1String("focus"))) {
        if (step == QLatin1String("focus")) {
            control.poke(f.addressOf("AutoFocusStat"), QByteArray(4, '\0'));
        } else {
            f.setFailing("AutoFocusStat", true);
        }
    } else if (step == QLatin1String("close")) {
        f.module().host().closeCamera(f.camera().id);
    } else if (step == QLatin1String("going")) {
        f.tree().readyForDelete();
    }
    f.takeHeard();
    control.clearAccessLog();
    if (step == QLatin1String("tune")) {
        f.tree().StopSmartTune(name);
    } else {
        QCOMPARE(f.tree().setFeatureValue("Command", name, QVariant()), answer);
    }
    QCOMPARE(f.accessesOfWrites(), writes);
    QCOMPARE(f.isRefreshDue(), writes > 0);
    QCOMPARE(f.heardOfCommand(), heard);
}

void tst_commands::whileAQuestionIsOpen_data()
{
    QTest::addColumn<QString>("meanwhile");
    QTest::addColumn<QStringList>("heard");
    const QStringList deleted{DELETE_SET, ran("UserSetDelete")};
    QTest::newRow("the same command") << "UserSetDelete" << deleted;
    QTest::newRow("a second question") << "UserSetRecoverFactory" << deleted;
    QTest::newRow("a warning") << "UserSetRecover" << deleted;
    QTest::newRow("a failure is shown behind it")
        << "DoesNotExist"
        << QStringList{DELETE_SET,
                       "box The feature could not be set.|Node 'DoesNotExist' was not executed. @/"
                       "0x90006203: The node does not exist or is of another kind.",
                       ran("UserSetDelete")};
    QTest::newRow("the camera goes") << "close" << QStringList{DELETE_SET};
}

void tst_commands::whileAQuestionIsOpen()
{
    QFETCH(QString, meanwhile);
    QFETCH(QStringList, heard);
    CommandFixture f;
    QVERIFY(f.setOnDevice("UserSetAdd", 0));
    f.control().clearAccessLog();
    f.takeHeard();
    ScreenWatch watch;
    f.m_whileBoxIsUp = [&f, &meanwhile] {
        if (meanwhile == QLatin1String("close")) {
            f.module().host().closeCamera(f.camera().id);
        } else {
            QVERIFY(!f.tree().setFeatureValue("Command", meanwhile, QVariant()));
        }
    };
    const bool gone = meanwhile == QLatin1String("close");
    QCOMPARE(f.tree().setFeatureValue("Command", "UserSetDelete", QVariant()), !gone);
    QCOMPARE(f.accessesOfWrites(), gone ? 0 : 1);
    QCOMPARE(watch.m_nMostBoxes, 1);
    QCOMPARE(f.heardOfCommand(), heard);
}

void tst_commands::treeRemovedUnderAQuestion()
{
    CommandFixture f;
    const QPointer<VexaFeatureTree> tree = &f.tree();
    f.m_whileBoxIsUp = [&f] { f.module().close(f.camera()); };
    QVERIFY(!tree->setFeatureValue("Command", "RecoverFactory", QVariant()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(!tree);
    QCOMPARE(f.accessesOfWrites(), 0);
    QVERIFY(!CustomLoadingDialog::isLoading(1));
}

/// The caller's item is gone when the command has run.
void tst_commands::rowsMadeAnewUnderALoad()
{
    CommandFixture f;
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

void tst_commands::loadWhileADialogIsUp()
{
    CommandFixture f;
    ScreenWatch watch;
    QVERIFY(f.write("CommunicationProtocols", 3));
    QVERIFY(CustomLoadingDialog::isLoading(1));
    QVERIFY(f.write("UserSetLoad", QVariant()));
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    QCOMPARE(watch.m_nLoadings, 1);
}

void tst_commands::loadingDialogOfFrameGrabbers()
{
    CommandFixture f(QStringLiteral("grabber-camera"));
    const int key = int(f.camera().id) + 3;
    f.control().setLatency(50);
    QVERIFY(f.write("UserSetLoad", QVariant()));
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(key));
    QVERIFY(f.write("DeviceReset", QVariant()));
    QVERIFY(!CustomLoadingDialog::isLoading(key));
}

void tst_commands::autoTrigger()
{
    CommandFixture f;
    const auto timerOf = [&f](int interval) { return f.isTimerActive(interval); };
    QVERIFY(!timerOf(0) && !timerOf(7));
    f.tree().SetAutoSoftwareTrig(true, 0);
    QVERIFY(timerOf(0));
    f.tree().SetAutoSoftwareTrig(true, 7);
    f.control().clearAccessLog();
    QTRY_VERIFY(f.accessesOfWrites() >= 3);
    f.setFailing("TriggerSoftware", true);
    QTRY_VERIFY(f.failedWrites() >= 2);
    f.tree().SetAutoSoftwareTrig(false, 0);
    QVERIFY(!timerOf(7));
    QVERIFY(!f.isRefreshDue());
    QCOMPARE(f.heardOfCommand(), QStringList());
    f.tree().SetAutoSoftwareTrig(true, 4000000000U);
    QVERIFY(timerOf(INT_MAX));
}

void tst_commands::tuneDataAreHandedOn()
{
    CommandFixture f;
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

void tst_commands::thousandClicks()
{
    static const char *const commands[] = {
        "StatisticsReset", "UserSetAdd",     "UserSetDelete",         "UserSetLoad",
        "UserSetSave",     "UserSetRecover", "UserSetRecoverDefault", "UserSetRecoverFactory",
        "StatisticsReset", "LightingAllOff"};
    CommandFixture f;
    f.takeHeard();
    QRandomGenerator random(20260101);
    ScreenWatch watch;
    int failures = 0;
    int additionsFailed = 0;
    for (int click = 0; click < 1000; ++click) {
        const int index = random.bounded(int(std::size(commands)));
        f.setFailing(commands[index], random.bounded(3) == 0);
        f.m_bAnswersYes = random.bounded(4) != 0;
        f.control().clearAccessLog();
        QPushButton *target = f.button(commands[index]);
        QVERIFY(target);
        target->setEnabled(true);
        target->click();
        const int failed = f.failedWrites();
        f.setFailing(commands[index], false);
        failures += failed;
        additionsFailed += index == 1 ? failed : 0;
        const QStringList heard = f.heardOfCommand();
        QVERIFY2(
            heard.filter(QStringLiteral("was not executed")).filter(QStringLiteral("box ")).size()
                == failed,
            qPrintable(heard.join(QLatin1Char('\n'))));
        QCOMPARE(heard.filter(QStringLiteral("prompt ")).size(), index == 1 ? failed : 0);
        if (random.bounded(2) == 0) {
            QCoreApplication::processEvents();
        }
    }
    qInfo("%d failures, %d of them additions", failures, additionsFailed);
    QVERIFY(failures > 100 && additionsFailed > 10);
    QCOMPARE(watch.m_nMostBoxes, 1);
    QTRY_VERIFY(!f.isRefreshDue() && !CustomLoadingDialog::isLoading(1));
}

QTEST_MAIN(tst_commands)
#include "tst_commands.moc"
