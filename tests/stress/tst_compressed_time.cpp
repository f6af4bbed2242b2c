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

constexpr qint64 MOST_GROWTH_KIB = 4096;
constexpr int PATIENCE_MS = 60000;

/// What the process holds of the system.
struct Holdings
{
    qint64 memory = 0; ///< resident, KiB
    qint64 threads = 0;
    qint64 handles = 0;

    static Holdings now()
    {
        // Both hold what they may need again, up to limits of their own.
        QPixmapCache::clear();
        malloc_trim(0);
        Holdings holdings;
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
        std::printf("after %d rounds: %lld KiB, %lld threads, %lld handles\n", rounds, memory,
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
    // The thread of the last connection ends on its own.
    QTRY_VERIFY_WITH_TIMEOUT(Holdings::now().threads <= warm.threads, PATIENCE_MS);
    const Holdings end = Holdings::now();
    end.print(rounds + warmUp);
    QVERIFY(end.handles <= warm.handles);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    QVERIFY(end.memory - warm.memory <= MOST_GROWTH_KIB);
#endif
}

QTEST_MAIN(tst_compressed_time)
#include "tst_compressed_time.moc"
