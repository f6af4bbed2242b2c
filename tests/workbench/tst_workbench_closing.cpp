#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QFunction.h"
#include "WindowFixture.h"
#include "host/devicetask/CameraHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/MessageLogPanel.h"
#include "host/workbench/WorkbenchWindow.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QFile>
#include <QPixmapCache>
#include <QScopeGuard>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <malloc.h>
#include <memory>

/// Cameras closed at any moment, and very often.
class WorkbenchClosingTest : public QObject
{
    Q_OBJECT
private slots:
    void closesAtOnce_data();
    void closesAtOnce();
    void twoDevicesManyTimes();
    void smallDescriptionVeryOften();
};

namespace {

const QString FIRST = WindowFixture::FIRST;
const QString SECOND = WindowFixture::SECOND;
constexpr int LONG_WAIT = WindowFixture::LONG_WAIT;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool IS_SANITIZED = true;
#else
constexpr bool IS_SANITIZED = false;
#endif
constexpr int WARM_UP_ROUNDS = 6;
constexpr int TREE_ROUNDS = 12;
constexpr int SMALL_ROUNDS = 100;

/// QTRY_VERIFY looks every 50 ms, which is most of the time of a quick round.
template<class Condition>
bool becomes(Condition &&condition)
{
    return QTest::qWaitFor(condition, LONG_WAIT);
}

/// What grows to a limit of its own in the course of a test is at its limit from the start.
void fillBounded()
{
    QPixmapCache::setCacheLimit(1024);
    for (int count = 0; count < MessageLogPanel::MAXIMUM_MESSAGES; ++count) {
        QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_INFO, QStringLiteral("camera"),
                                                QStringLiteral("message"));
    }
}

/// What this process holds. A sanitizer keeps freed memory: a level of it means nothing there.
struct Level
{
    qint64 threads = 0;
    qint64 resident = 0; ///< KiB
    qint64 heap = 0; ///< KiB

    static Level now()
    {
        malloc_trim(0);
        Level level;
        QFile file(QStringLiteral("/proc/self/status"));
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray &line : file.readAll().split('\n')) {
                const QByteArray value = line.mid(line.indexOf(':') + 1).simplified();
                if (line.startsWith("Threads:")) {
                    level.threads = value.toLongLong();
                } else if (line.startsWith("VmRSS:") && !IS_SANITIZED) {
                    level.resident = value.split(' ').first().toLongLong();
                    level.heap = static_cast<qint64>(mallinfo2().uordblks / 1024);
                }
            }
        }
        return level;
    }
};

/// 24 or 100 openings after `before`; one that leaves its tree behind costs a MiB, one thread its stack.
void verifyLevel(const Level &before)
{
    // Threads of pools end after a while; those of a device that is left behind would not.
    QVERIFY2(
        becomes([&] { return Level::now().threads <= before.threads + 2; }),
        qPrintable(
            QStringLiteral("%1 threads, %2 before").arg(Level::now().threads).arg(before.threads)));
    const Level after = Level::now();
    QVERIFY2(after.heap - before.heap <= 4 * 1024,
             qPrintable(QStringLiteral("heap grew by %1 KiB").arg(after.heap - before.heap)));
    // What the allocator keeps varies with the threads that freed it.
    QVERIFY2(after.resident - before.resident <= 16 * 1024,
             qPrintable(QStringLiteral("grew by %1 KiB").arg(after.resident - before.resident)));
}

enum class Moment { AtRest, AccessHangs, NotResponding, Lost, Reopening, Starting };

} // namespace

Q_DECLARE_METATYPE(Moment)

void WorkbenchClosingTest::closesAtOnce_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::newRow("at rest") << Moment::AtRest;
    QTest::newRow("access hangs, not told yet") << Moment::AccessHangs;
    QTest::newRow("access hangs, told") << Moment::NotResponding;
    QTest::newRow("waiting for the return") << Moment::Lost;
    QTest::newRow("asking for a new connection") << Moment::Reopening;
    QTest::newRow("start of grabbing hangs") << Moment::Starting;
}

void WorkbenchClosingTest::closesAtOnce()
{
    QFETCH(Moment, moment);
    WindowFixture fixture;
    const auto reopening = std::make_shared<std::atomic<bool>>(false);
    const auto mayReopen = std::make_shared<std::atomic<bool>>(moment != Moment::Reopening);
    const auto opened = std::make_shared<std::atomic<bool>>(false);
    const auto create = fixture.source(FIRST).create;
    fixture.source(FIRST).create = [=](GError **error) {
        *reopening = opened->exchange(true);
        while (*reopening && !*mayReopen) {
            QThread::msleep(1);
        }
        return create(error);
    };
    // A test that fails must not wait for what it left blocked.
    const auto release = qScopeGuard([mayReopen] { *mayReopen = true; });
    fixture.openAndWait(FIRST);
    switch (moment) {
    case Moment::AtRest:
        break;
    case Moment::AccessHangs:
    case Moment::NotResponding:
        fixture.control(FIRST).blockNextAccess();
        fixture.session(FIRST)->tree()->RefreshFeatures();
        QTest::qWait(200);
        if (moment == Moment::NotResponding) {
            QTRY_COMPARE_WITH_TIMEOUT(fixture.stateText(FIRST), QString("Not responding"),
                                      LONG_WAIT);
        }
        break;
    case Moment::Lost:
    case Moment::Reopening:
        fixture.unplug(FIRST);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.stateText(FIRST), QString("Lost"), LONG_WAIT);
        QTRY_VERIFY_WITH_TIMEOUT(reopening->load(), LONG_WAIT);
        break;
    case Moment::Starting:
        fixture.control(FIRST).blockNextAccess();
        fixture.click("StartButton");
        QTest::qWait(100);
        QCOMPARE(fixture.stateText(FIRST), QString("Starting"));
        break;
    }
    QTest::qWait(50);
    fixture.click("CloseButton"); // what hangs still does
    QCOMPARE(fixture.stateText(FIRST), QString("Available"));
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    QCOMPARE(VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().keys(),
             QList<long int>{-1});

    // What hung comes to its end: nobody hears of it.
    const QString messages = fixture.messages();
    *mayReopen = true;
    fixture.control(FIRST).comeBack();
    fixture.control(FIRST).unblock();
    QTest::qWait(100);
    QCOMPARE(fixture.stateText(FIRST), QString("Available"));
    QCOMPARE(fixture.messages(), messages);
    fixture.forgetUpdates();
    fixture.openAndWait(FIRST);
    QCOMPARE(fixture.stateText(FIRST), QString("Open"));
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 1U);
}

void WorkbenchClosingTest::twoDevicesManyTimes()
{
    WindowFixture fixture;
    fillBounded();
    Level before;
    for (int round = 0; round < WARM_UP_ROUNDS + TREE_ROUNDS; ++round) {
        if (round == WARM_UP_ROUNDS) {
            before = Level::now();
        }
        fixture.forgetUpdates();
        for (const QString &id : {FIRST, SECOND}) {
            fixture.select(id);
            fixture.click("OpenButton");
        }
        // Closed sometimes in the middle of the opening or of the first full update, sometimes after it.
        const bool opened = round % 3 != 0;
        const bool updated = round % 3 == 2;
        for (const QString &id : {FIRST, SECOND}) {
            QVERIFY(becomes([&] { return !opened || fixture.stateText(id) == "Open"; }));
            QVERIFY(becomes([&] { return !updated || fixture.isUpdated(id); }));
        }
        for (const QString &id : {SECOND, FIRST}) {
            fixture.select(id);
            fixture.click("CloseButton");
            QCOMPARE(fixture.stateText(id), QString("Available"));
        }
        QVERIFY(becomes([] { return QTaskManager::Instance()->GetTaskCount() == 0; }));
    }
    QCOMPARE(VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().size(), 1);
    // Sessions that were given up end with their openings.
    QTRY_VERIFY(fixture.window().findChildren<CameraSession *>().isEmpty());
    verifyLevel(before);
}

void WorkbenchClosingTest::smallDescriptionVeryOften()
{
    WindowFixture fixture;
    const SimulatedDevices::Simulated device = SimulatedDevices::fromDescription(
        R"(<RegisterDescription ModelName="Small" xmlns="http://www.genicam.org/GenApi/Version_1_1">
             <Category Name="Root"><pFeature>Count</pFeature><pFeature>Name</pFeature></Category>
             <IntReg Name="Count"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>
               <pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
             <StringReg Name="Name"><Address>16</Address><Length>16</Length>
               <AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>
             <Port Name="Device"/>
           </RegisterDescription>)",
        QStringLiteral("small"), SimulatorControl::MemoryPattern::Zero);
    fillBounded();
    Level before;
    for (int round = 0; round < WARM_UP_ROUNDS + SMALL_ROUNDS; ++round) {
        if (round == WARM_UP_ROUNDS) {
            before = Level::now();
        }
        CameraSession camera(fixture.host(), device.source);
        QSignalSpy updated(&camera, &CameraSession::firstUpdateDone);
        camera.open();
        QVERIFY(updated.wait(LONG_WAIT));
        camera.close();
        QCOMPARE(camera.state(), CameraSession::State::Closed);
        QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    }
    verifyLevel(before);
}

QTEST_MAIN(WorkbenchClosingTest)
#include "tst_workbench_closing.moc"
