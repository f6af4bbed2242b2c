// What an export, a comparison and an import cost against the register accesses that they make.

#include "benchmarks/BenchReport.h"
#include "tests/featurefile/JobFixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>

namespace {

using BenchReport::report;
using Thread = VexaFeatureImExThread;
constexpr int LATENCY_US = 300;
constexpr int ATTEMPTS = 3;

struct Job
{
    double ratio =
        1e9; ///< time by accesses and latency, of several runs the one that was disturbed least
    int accesses = 0;
    int writes = 0;
};

/// False when the job fails.
bool run(JobFixture &fixture, unsigned int operation, const QString &path, Job *job)
{
    SimulatorControl &control = *fixture.device.control;
    control.clearAccessLog();
    QElapsedTimer clock;
    clock.start();
    const bool done = fixture.run(operation, path);
    const double microseconds = double(clock.nsecsElapsed()) / 1000.0;
    const QVector<SimulatorAccess> log = control.accessLog();
    job->accesses = log.size();
    job->writes = int(std::count_if(log.cbegin(), log.cend(), [](const SimulatorAccess &access) {
        return access.kind == SimulatorAccess::Write;
    }));
    job->ratio = std::min(job->ratio, microseconds / (double(job->accesses) * LATENCY_US));
    return done;
}

/// The same number of reads of one register without a job around them, by accesses and latency.
double bareReads(const JobFixture &fixture, const FeatureFileLines &file, int accesses)
{
    quint32 word = 0;
    QElapsedTimer clock;
    clock.start();
    for (int access = 0; access < accesses; ++access) {
        fixture.task->ReadMemory(file.registers.first().address, &word, sizeof word, nullptr);
    }
    return double(clock.nsecsElapsed()) / 1000.0 / (double(accesses) * LATENCY_US);
}

/// Changes every aligned register of a file that can be written back; gives their number.
int changeRegisters(const JobFixture &fixture, const FeatureFileLines &file)
{
    QSet<qint64> places;
    for (const FeatureFileLines::Register &line : file.registers) {
        int error = 0;
        const bool writable =
            line.reg.isEmpty() || fixture.task->GetAccessMode(line.reg, &error) == 4;
        if (writable && line.address % 4 == 0 && !places.contains(line.address)
            && !line.name.startsWith(QLatin1String("GevSC"))
            && !line.name.startsWith(QLatin1String("File"))) {
            places.insert(line.address);
            QByteArray byte = fixture.device.control->peek(quint64(line.address), 1);
            byte[0] = char(byte.at(0) ^ 1);
            fixture.device.control->poke(quint64(line.address), byte);
        }
    }
    return places.size();
}

bool measure(const QString &id)
{
    JobFixture fixture(SimulatedDevices::builtIn(id));
    SimulatorControl &control = *fixture.device.control;
    const QString path = fixture.folder.filePath(QStringLiteral("bench.vxf"));
    control.setLatency(LATENCY_US);
    control.setLogging(true);
    Job exporting;
    Job comparing;
    Job importing;
    double bare = 1e9;
    int changed = 0;
    for (int attempt = 0; attempt < ATTEMPTS; ++attempt) {
        if (!run(fixture, Thread::OPERATION_EXPORT, path, &exporting)
            || !run(fixture, Thread::OPERATION_CHECK_FILE, path, &comparing)) {
            return false;
        }
        QFile file(path);
        const bool isOpen = file.open(QIODevice::ReadOnly);
        const FeatureFileLines lines = FeatureFileLines::of(file.readAll());
        if (!isOpen || lines.registers.isEmpty()) {
            return false;
        }
        bare = std::min(bare, bareReads(fixture, lines, exporting.accesses));
        changed = changeRegisters(fixture, lines);
        if (!run(fixture, Thread::OPERATION_APPLY_FILE, path, &importing)) {
            return false;
        }
    }
    const QString title = QStringLiteral("%1 of %2 / its %3 accesses x 300 us");
    report(title.arg(QStringLiteral("export"), id).arg(exporting.accesses), exporting.ratio, 1.1,
           QStringLiteral("x"));
    report(title.arg(QStringLiteral("bare reads"), id).arg(exporting.accesses), bare, 1.1,
           QStringLiteral("x"));
    report(title.arg(QStringLiteral("check"), id).arg(comparing.accesses), comparing.ratio, 1.1,
           QStringLiteral("x"));
    report(title.arg(QStringLiteral("import"), id).arg(importing.accesses), importing.ratio, 1.2,
           QStringLiteral("x"));
    report(QStringLiteral("writes of that import / %1 registers that differ").arg(changed),
           double(importing.writes) / changed, 1.2, QStringLiteral("x"));
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    // A node that has no register is told of in the log, which costs more here than the node.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg) {
            QTextStream(stderr) << text << '\n';
        }
    });
    const QStringList chosen = QCoreApplication::arguments().mid(1);
    for (const QString &id : chosen.isEmpty() ? SimulatedDevices::builtInIds() : chosen) {
        if (!measure(id)) {
            QTextStream(stderr) << "a job on " << id << " failed\n";
            return 1;
        }
    }
    return BenchReport::isOverBudget() ? 1 : 0;
}
