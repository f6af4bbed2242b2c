#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "host/devicetask/CameraHost.h"
#include "host/shellservices/ShellHost.h"
#include "host/utilitykit/UtilityHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/DeviceCatalog.h"
#include "host/workbench/HeadlessRunner.h"
#include "host/workbench/MessageLogPanel.h"
#include "host/workbench/WorkbenchWindow.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

/// The window as its user works with it: the list, the buttons, the language, and devices that go wrong.
class WorkbenchWindowTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void openAndCloseFromTheList();
    void selectionDecidesWhatIsShown();
    void grabbingShutsImportAndExport();
    void slowOpeningLeavesTheWindowAlive();
    void closeWhileOpening();
    void lostDevice_data();
    void lostDevice();
    void reopensMany();
    void languageSwitch();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void messagesAreBounded();
    void promptIsShownOnceAndEscaped();
    void silentDeviceEndsAHeadlessRun();

private:
    void click(const char *button);
    void select(const QString &id);
    QString stateText(const QString &id) const;
    bool isUpdated(const QString &id) const;
    void openAndWait(const QString &id);
    QString messages() const
    {
        return m_pWindow->findChild<QPlainTextEdit *>("MessageLog")->toPlainText();
    }
    QTreeWidget *list() const { return m_pWindow->findChild<QTreeWidget *>("DeviceList"); }
    SimulatorControl &control(const QString &id) { return *m_catalog.find(id)->control; }

    DeviceCatalog m_catalog;
    std::unique_ptr<CameraHost> m_pHost;
    std::unique_ptr<WorkbenchWindow> m_pWindow;
    QSet<QString> m_updated;
};

namespace {

const QString FIRST = QStringLiteral("area-camera");
const QString SECOND = QStringLiteral("area-camera#2");
constexpr int LONG_WAIT = 60000;

} // namespace

void WorkbenchWindowTest::init()
{
    ShellHost::useTransientSettings();
    UtilityHost::useTransientSettings();
    m_catalog = DeviceCatalog();
    QString error;
    QCOMPARE(m_catalog.addBuiltIn(FIRST, &error), FIRST);
    QCOMPARE(m_catalog.addBuiltIn(FIRST, &error), SECOND);
    m_pHost = std::make_unique<CameraHost>();
    m_pWindow = std::make_unique<WorkbenchWindow>(*m_pHost, m_catalog);
    m_pWindow->setLanguage("ENG");
    m_updated.clear();
    connect(m_pWindow.get(), &WorkbenchWindow::deviceUpdated, this,
            [this](const QString &id) { m_updated.insert(id); });
    m_pWindow->show();
}

void WorkbenchWindowTest::cleanup()
{
    m_pWindow.reset();
    m_pHost.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void WorkbenchWindowTest::click(const char *button)
{
    QTest::mouseClick(m_pWindow->findChild<QPushButton *>(button), Qt::LeftButton);
}

void WorkbenchWindowTest::select(const QString &id)
{
    const QList<QTreeWidgetItem *> items = list()->findItems(id, Qt::MatchExactly);
    QCOMPARE(items.size(), 1);
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list()->visualItemRect(items.first()).center());
}

QString WorkbenchWindowTest::stateText(const QString &id) const
{
    const QList<QTreeWidgetItem *> items = list()->findItems(id, Qt::MatchExactly);
    return items.isEmpty() ? QString() : items.first()->text(1);
}

bool WorkbenchWindowTest::isUpdated(const QString &id) const
{
    return m_updated.contains(id);
}

void WorkbenchWindowTest::openAndWait(const QString &id)
{
    select(id);
    click("OpenButton");
    QTRY_VERIFY_WITH_TIMEOUT(isUpdated(id), LONG_WAIT);
}

void WorkbenchWindowTest::openAndCloseFromTheList()
{
    openAndWait(FIRST);
    QCOMPARE(stateText(FIRST), QString("Open"));
    const long int cameraId = m_pWindow->session(FIRST)->cameraId();
    VexaFeatureTree *tree = m_pWindow->session(FIRST)->tree();
    QVERIFY(tree && tree->isVisible() && tree->AllTreeItemsMap().size() >= 180);
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 1U);

    click("CloseButton");
    QCOMPARE(stateText(FIRST), QString("Available"));
    QVERIFY(!VexaMainFeatureWidget::instance()->isFeatureTreeExist(cameraId));
    QVERIFY(QTaskManager::Instance()->IsCameraTaskReleased(cameraId));
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    QCOMPARE(ShellHost::instance()->currentCameraID(), -1L);
}

void WorkbenchWindowTest::selectionDecidesWhatIsShown()
{
    openAndWait(FIRST);
    openAndWait(SECOND);
    QVERIFY(m_pWindow->session(SECOND)->tree()->isVisible());
    select(FIRST);
    QVERIFY(m_pWindow->session(FIRST)->tree()->isVisible());
    QCOMPARE(ShellHost::instance()->currentCameraID(), m_pWindow->session(FIRST)->cameraId());
    // Closing the one on show leaves the other open and the empty page on show.
    click("CloseButton");
    QVERIFY(!m_pWindow->session(SECOND)->tree()->isVisible());
    select(SECOND);
    QVERIFY(m_pWindow->session(SECOND)->tree()->isVisible());
}

void WorkbenchWindowTest::grabbingShutsImportAndExport()
{
    openAndWait(FIRST);
    const auto enabledToolButtons = [this] {
        int enabled = 0;
        for (const QPushButton *button :
             m_pWindow->session(FIRST)->tree()->findChildren<QPushButton *>()) {
            enabled += button->isVisible() && button->isEnabled()
                && QByteArray(button->parentWidget()->metaObject()->className())
                    == "VexaFeatureToolBar";
        }
        return enabled;
    };
    QCOMPARE(enabledToolButtons(), 5);
    click("StartButton");
    QCOMPARE(stateText(FIRST), QString("Grabbing"));
    QCOMPARE(enabledToolButtons(), 2);
    click("StopButton");
    QCOMPARE(stateText(FIRST), QString("Open"));
    QCOMPARE(enabledToolButtons(), 5);
}

void WorkbenchWindowTest::slowOpeningLeavesTheWindowAlive()
{
    control(FIRST).setLatency(2000);
    select(FIRST);
    QElapsedTimer longest;
    qint64 stall = 0;
    QTimer ticks;
    connect(&ticks, &QTimer::timeout, this, [&] { stall = qMax(stall, longest.restart()); });
    ticks.start(1);
    longest.start();
    click("OpenButton");
    QCOMPARE(stateText(FIRST), QString("Opening"));
    QTRY_COMPARE_WITH_TIMEOUT(stateText(FIRST), QString("Open"), LONG_WAIT);
    QVERIFY2(stall < 2000, QByteArray::number(stall));
}

void WorkbenchWindowTest::closeWhileOpening()
{
    control(FIRST).blockNextAccess();
    select(FIRST);
    click("OpenButton");
    click("CloseButton");
    QCOMPARE(stateText(FIRST), QString("Available"));
    control(FIRST).unblock();
    QTRY_COMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    openAndWait(FIRST);
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 1U);
}

void WorkbenchWindowTest::lostDevice_data()
{
    QTest::addColumn<bool>("afterUpdate");
    QTest::addColumn<bool>("grabbing");
    QTest::newRow("lost at rest") << true << false;
    QTest::newRow("lost while grabbing") << true << true;
    QTest::newRow("lost during the full update") << false << false;
}

void WorkbenchWindowTest::lostDevice()
{
    QFETCH(bool, afterUpdate);
    QFETCH(bool, grabbing);
    if (!afterUpdate) {
        control(FIRST).setLatency(1000);
    }
    select(FIRST);
    click("OpenButton");
    QTRY_COMPARE_WITH_TIMEOUT(stateText(FIRST), QString("Open"), LONG_WAIT);
    if (afterUpdate) {
        QTRY_VERIFY_WITH_TIMEOUT(isUpdated(FIRST), LONG_WAIT);
    }
    if (grabbing) {
        click("StartButton");
    }
    QSignalSpy lost(m_pWindow.get(), &WorkbenchWindow::deviceLost);
    control(FIRST).vanish();
    control(FIRST).loseControl();
    QTRY_COMPARE_WITH_TIMEOUT(stateText(FIRST), QString("Lost"), LONG_WAIT);
    QTRY_COMPARE_WITH_TIMEOUT(QTaskManager::Instance()->GetTaskCount(), 0U, LONG_WAIT);
    QCOMPARE(lost.size(), 1);
    QCOMPARE(messages().count("The connection to the device was lost."), 1);
    QCOMPARE(ShellHost::instance()->currentCameraID(), -1L);

    control(FIRST).setLatency(0);
    control(FIRST).comeBack();
    m_updated.clear();
    openAndWait(FIRST);
    QCOMPARE(stateText(FIRST), QString("Open"));
}

void WorkbenchWindowTest::reopensMany()
{
    for (int round = 0; round < 10; ++round) {
        select(FIRST);
        click("OpenButton");
        QTRY_COMPARE_WITH_TIMEOUT(stateText(FIRST), QString("Open"), LONG_WAIT);
        // Closed in the middle of the first full update.
        click("CloseButton");
        QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    }
    QCOMPARE(VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().keys(),
             QList<long int>{-1});
}

void WorkbenchWindowTest::languageSwitch()
{
    openAndWait(FIRST);
    auto *combo = m_pWindow->findChild<QComboBox *>("LanguageCombo");
    const auto *open = m_pWindow->findChild<QPushButton *>("OpenButton");
    const QString english = open->text();
    combo->setCurrentIndex(combo->findData("CH"));
    emit combo->activated(combo->currentIndex());
    QTRY_VERIFY(open->text() != english);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("CH"));
    QVERIFY(stateText(FIRST) != QString("Open"));
    combo->setCurrentIndex(combo->findData("ENG"));
    emit combo->activated(combo->currentIndex());
    QTRY_COMPARE(open->text(), english);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("ENG"));
}

void WorkbenchWindowTest::nothingIsCutOff_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English words too long") << "ENG";
    QTest::newRow("Chinese words too wide") << "CH";
}

void WorkbenchWindowTest::nothingIsCutOff()
{
    QFETCH(QString, language);
    m_pWindow->setLanguage(language);
    openAndWait(FIRST);
    QCoreApplication::processEvents();
    QCOMPARE(m_pWindow->size(), QSize(1280, 800));
    for (const QPushButton *button : m_pWindow->findChildren<QPushButton *>()) {
        const bool shown = button->isVisible() && !button->text().isEmpty();
        QVERIFY2(!shown
                     || button->fontMetrics().horizontalAdvance(button->text()) <= button->width(),
                 button->text().toUtf8());
    }
    for (const QLabel *label : m_pWindow->findChildren<QLabel *>()) {
        const bool shown = label->isVisible() && !label->text().isEmpty();
        QVERIFY2(!shown
                     || label->fontMetrics().horizontalAdvance(label->text())
                         <= label->contentsRect().width(),
                 label->text().toUtf8());
    }
    // Everything that is shown lies inside of what holds it.
    const QWidget *tree = m_pWindow->session(FIRST)->tree();
    const QRect inWindow(tree->mapTo(m_pWindow.get(), QPoint()), tree->size());
    QVERIFY(m_pWindow->rect().contains(inWindow));
    QVERIFY(tree->minimumSizeHint().width() <= tree->width());
}

void WorkbenchWindowTest::messagesAreBounded()
{
    for (int count = 0; count < MessageLogPanel::MAXIMUM_MESSAGES + 50; ++count) {
        QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_INFO, "camera",
                                                QStringLiteral("line\n%1").arg(count));
    }
    const QStringList lines = messages().split('\n');
    QCOMPARE(lines.size(), MessageLogPanel::MAXIMUM_MESSAGES);
    QVERIFY(lines.last().contains("camera: line 1049"));
}

void WorkbenchWindowTest::promptIsShownOnceAndEscaped()
{
    QFunction::Instance()->SendShowPromptSignal(-1, 3, "<b>no markup</b>", "Title", false);
    const QList<CustomMessageBox *> boxes = m_pWindow->findChildren<CustomMessageBox *>();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first()->cContent(), QString("&lt;b&gt;no markup&lt;/b&gt;"));
    boxes.first()->close();
}

void WorkbenchWindowTest::silentDeviceEndsAHeadlessRun()
{
    WorkbenchOptions options;
    options.readName = "Width";
    HeadlessRunner runner(*m_pWindow, options, {FIRST}, std::chrono::milliseconds(300));
    QSignalSpy finished(&runner, &HeadlessRunner::finished);
    control(FIRST).blockNextAccess();
    runner.start();
    QVERIFY(finished.wait(10000));
    QCOMPARE(finished.first().first().toInt(), 1);
    QVERIFY2(messages().contains("No answer from area-camera"), qPrintable(messages()));
    control(FIRST).unblock();
}

QTEST_MAIN(WorkbenchWindowTest)
#include "tst_workbench_window.moc"
