#include "ShellServicesModule/QLocalCfg.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"

#include <QDir>
#include <QPixmapCache>
#include <QThreadPool>
#include <QtConcurrent>
#include <QtTest>

#include <malloc.h>

namespace {

// Qt keeps a few KiB of what it has painted each round; a tree that stays behind is half a MiB.
constexpr qint64 MOST_GROWTH_KIB = 2048;
constexpr qint64 MOST_GROWTH_A_ROUND_KIB = 12;
constexpr int LATE_THREADS = 2; ///< each with a handle; a leak is one an opening
constexpr int PATIENCE_MS = 60000;

/// What the process holds of the system.
struct Holdings
{
    qint64 used; ///< by live objects, KiB
    int threads;
    int handles;

    static Holdings now()
    {
        // Holds what it may need again, up to a limit of its own.
        QPixmapCache::clear();
        const struct mallinfo2 heap = mallinfo2();
        const auto entries = [](const char *folder) {
            return QDir(QString::fromLatin1(folder))
                .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                .size();
        };
        return {static_cast<qint64>((heap.uordblks + heap.hblkhd) / 1024),
                entries("/proc/self/task"), entries("/proc/self/fd")};
    }
    void print(int rounds) const
    {
        std::printf("after %d rounds: %lld KiB used, %d threads, %d handles\n", rounds, used,
                    threads, handles);
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
    const int rounds = qMax(3, qEnvironmentVariableIntValue("VEXA_STRESS_ROUNDS"));
    const int warmUp = qMax(2, rounds / 4);
    ModuleFixture fixture;
    fixture.mainWidget().show();
    const SimulatedDevices::Simulated camera =
        SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    const SimulatedDevices::Simulated reader =
        SimulatedDevices::builtIn(QStringLiteral("code-reader"));
    Holdings warm{};
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
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    const qint64 most = std::numeric_limits<int>::max();
#else
    const qint64 most = MOST_GROWTH_KIB + MOST_GROWTH_A_ROUND_KIB * rounds;
#endif
    // What the last closing left to other threads and to the event loop goes in its own time; a leak never goes.
    const bool settled = QTest::qWaitFor(
        [&] {
            const Holdings now = Holdings::now();
            return now.threads <= warm.threads + LATE_THREADS
                && now.handles <= warm.handles + LATE_THREADS && now.used - warm.used <= most;
        },
        PATIENCE_MS);
    Holdings::now().print(rounds + warmUp);
    QVERIFY(settled);
}

QTEST_MAIN(tst_compressed_time)
#include "tst_compressed_time.moc"
