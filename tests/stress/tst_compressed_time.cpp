#include "ShellServicesModule/QLocalCfg.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"

#include <QDir>
#include <QFile>
#include <QPixmapCache>
#include <QThreadPool>
#include <QtConcurrent>
#include <QtTest>

#include <malloc.h>

namespace {

// Qt keeps a few KiB of what it has painted each round; a tree that stays behind is half a MiB.
constexpr qint64 MOST_GROWTH_KIB = 2048;
constexpr qint64 MOST_GROWTH_A_ROUND_KIB = 12;
constexpr qint64 MOST_SCATTERED_KIB =
    8192; ///< resident: holes, and pages of libraries that were touched
constexpr int LATE_THREADS = 2; ///< each with a handle; a leak is one an opening
constexpr int PATIENCE_MS = 60000;

/// What the process holds of the system.
struct Holdings
{
    qint64 memory = 0; ///< resident, KiB
    qint64 used = 0; ///< by live objects, KiB
    qint64 threads = 0;
    qint64 handles = 0;

    static Holdings now()
    {
        // Both hold what they may need again, up to limits of their own.
        QPixmapCache::clear();
        malloc_trim(0);
        const struct mallinfo2 heap = mallinfo2();
        Holdings holdings;
        holdings.used = static_cast<qint64>((heap.uordblks + heap.hblkhd) / 1024);
        QFile status(QStringLiteral("/proc/self/status"));
        if (status.open(QIODevice::ReadOnly)) {
            for (const QByteArray &line : status.readAll().split('\n')) {
                const qint64 number =
                    line.mid(line.indexOf(':') + 1).simplified().split(' ').first().toLongLong();
                holdings.memory = line.startsWith("VmRSS:") ? number : holdings.memory;
                holdings.threads = line.startsWith("Threads:") ? number : holdings.threads;
            }
        }
        holdings.handles =
            QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::System | QDir::AllEntries).size();
        return holdings;
    }

    void print(int rounds) const
    {
        std::printf("after %d rounds: %lld KiB used, %lld resident, %lld threads, %lld handles\n",
                    rounds, used, memory, threads, handles);
        std::fflush(stdout);
    }
};

} // namespace

class tst_compressed_time : public QObject
{
    Q_OBJECT
private slots:
    void nothingPilesUp();

private:
    void live(ModuleFixture &fixture, const ModuleFixture::Camera &camera, bool even);
    void loseAndReturn(ModuleFixture &fixture, const ModuleFixture::Camera &camera);
};

void tst_compressed_time::live(ModuleFixture &fixture, const ModuleFixture::Camera &camera,
                               bool even)
{
    QLocalCfg::Instance()->SetUserLevel(even ? 0 : 2);
    QLocalCfg::Instance()->m_strPropertyLan = even ? QStringLiteral("CH") : QStringLiteral("ENG");
    camera.tree->OnOptionsChanged();
    camera.tree->notifyEditorUpdate();
    QVERIFY(fixture.host().startGrabbing(camera.id));
    camera.tree->OnCameraStartShot();
    VexaPropertyTreeItem *width = camera.tree->propertyItemByName(QStringLiteral("Width"));
    QTRY_VERIFY_WITH_TIMEOUT(width->readOnly(), PATIENCE_MS);
    camera.tree->OnAddValueChangedNodes({QStringLiteral("Width"), QStringLiteral("PixelFormat")});
    camera.tree->RefreshFeatures();
    QVERIFY(fixture.host().stopGrabbing(camera.id));
    camera.tree->OnCameraStopShot();
    QTRY_VERIFY_WITH_TIMEOUT(!width->readOnly(), PATIENCE_MS);
}

void tst_compressed_time::loseAndReturn(ModuleFixture &fixture, const ModuleFixture::Camera &camera)
{
    camera.device.control->vanish();
    camera.tree->RefreshFeatures();
    QTRY_COMPARE_WITH_TIMEOUT(fixture.host().condition(camera.id), DeviceCondition::Lost,
                              PATIENCE_MS);
    camera.device.control->comeBack();
    const auto result = QtConcurrent::run([&] { return fixture.host().reopenCamera(camera.id); });
    QTRY_VERIFY_WITH_TIMEOUT(result.isFinished(), PATIENCE_MS);
    QCOMPARE(result.result().cameraId, camera.id);
    fixture.mainWidget().OnCameraOpen(camera.id);
    camera.tree->OnResartCameraOpen(DEVICE_ACCESS_CONTROL);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera, PATIENCE_MS));
}

void tst_compressed_time::nothingPilesUp()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.info=false\n*.debug=false"));
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    // With an arena a thread, what was freed lies scattered over them and looks like growth.
    mallopt(M_ARENA_MAX, 1);
    const int rounds = qMax(3, qEnvironmentVariableIntValue("VEXA_STRESS_ROUNDS"));
    const int warmUp = qMax(2, rounds / 4);
    ModuleFixture fixture;
    fixture.mainWidget().show();
    const SimulatedDevices::Simulated camera =
        SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    const SimulatedDevices::Simulated reader =
        SimulatedDevices::builtIn(QStringLiteral("code-reader"));
    Holdings warm;
    for (int round = 1; round <= rounds + warmUp; ++round) {
        for (const SimulatedDevices::Simulated &device : {camera, reader}) {
            const ModuleFixture::Camera open = fixture.open(device);
            QVERIFY(ModuleFixture::waitForFirstUpdate(open, PATIENCE_MS));
            live(fixture, open, round % 2 == 0);
            loseAndReturn(fixture, open);
            if (QTest::currentTestFailed()) {
                return;
            }
            fixture.close(open);
        }
        if (round == warmUp) {
            warm = Holdings::now();
            warm.print(round);
        }
    }
    // What the last closing left to other threads and to the event loop goes in its own time; a leak never goes.
    const auto grownAtMost = [&warm](qint64 used, qint64 resident) {
        const Holdings now = Holdings::now();
        return now.threads <= warm.threads + LATE_THREADS
            && now.handles <= warm.handles + LATE_THREADS && now.used - warm.used <= used
            && now.memory - warm.memory <= resident;
    };
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    const qint64 most = std::numeric_limits<int>::max();
#else
    const qint64 most = MOST_GROWTH_KIB + MOST_GROWTH_A_ROUND_KIB * rounds;
#endif
    const bool settled =
        QTest::qWaitFor([&] { return grownAtMost(most, most + MOST_SCATTERED_KIB); }, PATIENCE_MS);
    Holdings::now().print(rounds + warmUp);
    QVERIFY(settled);
}

QTEST_MAIN(tst_compressed_time)
#include "tst_compressed_time.moc"
