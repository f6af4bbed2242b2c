// What a file costs on its way to a device and back, against the register accesses that it makes.

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "benchmarks/BenchReport.h"
#include "host/devicetask/CameraHost.h"
#include "host/simulator/SimulatedDevices.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

namespace {

using BenchReport::report;
constexpr int SIZE = 20 * 1000 * 1000;
constexpr int BLOCK = 1024; // of the simulated devices
constexpr int ACCESSES_A_BLOCK = 8;
constexpr int LATENCY_US = 300;
constexpr int ATTEMPTS = 3;

QByteArray randomBytes()
{
    QByteArray bytes(SIZE, '\0');
    QRandomGenerator random(7);
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random.generate()); });
    return bytes;
}

bool measure(SimulatorControl &control, QCameraTask &task, const QString &path, bool writes)
{
    const QString entry = QStringLiteral("MultiROI");
    double best = 1e9;
    int accesses = 0;
    for (int attempt = 0; attempt < ATTEMPTS && best > 1.1; ++attempt) {
        control.clearAccessLog();
        QElapsedTimer clock;
        clock.start();
        if ((writes ? task.WriteDeviceFile(path, entry) : task.ReadDeviceFile(path, entry)) != 0) {
            QTextStream(stderr) << task.GetLastErrorRemark() << '\n';
            return false;
        }
        const double taken = double(clock.nsecsElapsed()) / 1000;
        accesses = control.accessLog().size();
        best = std::min(best, taken / (accesses * double(LATENCY_US)));
    }
    report(writes ? "20 MB to the device / accesses x latency, 300 us an access"
                  : "20 MB from the device / accesses x latency, 300 us an access",
           best, 1.1, "x");
    report("register accesses of a block, opening and closing with it",
           double(accesses) / ((SIZE + BLOCK - 1) / BLOCK), ACCESSES_A_BLOCK + 0.01, "");
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file.bin"));
    const QByteArray bytes = randomBytes();
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != SIZE) {
        return 2;
    }
    file.close();
    CameraHost host;
    const auto device = SimulatedDevices::builtIn(QStringLiteral("code-reader"));
    const long int id = host.openCamera(*device.source).cameraId;
    QCameraBasicTask *basicTask = QTaskManager::Instance()->GetTaskByIDEx(id);
    if (!basicTask) {
        return 2;
    }
    device.control->setQuiet(true);
    device.control->setLogging(true);
    device.control->setLatency(LATENCY_US);
    bool same = true;
    for (const bool writes : {true, false}) {
        if (!measure(*device.control, *basicTask->_CameraTak(), path, writes)) {
            return 2;
        }
        same = same && device.control->file(QStringLiteral("MultiROI")) == bytes;
        if (writes) {
            QFile::remove(path);
        }
    }
    same = same && file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
    report("bytes that differ there and back", same ? 0 : 1, 0, "");
    return BenchReport::isOverBudget() ? 1 : 0;
}
