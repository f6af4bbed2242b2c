#include "tests/workbench/WorkbenchProcess.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>

WorkbenchProcess::WorkbenchProcess() = default;

QString WorkbenchProcess::program()
{
    return QStringLiteral(WORKBENCH_PATH);
}

QStringList WorkbenchProcess::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "VEXA_DATA_PATH"}) {
        environment.remove(QString::fromLatin1(name));
    }
    environment.insert(QStringLiteral("HOME"), m_dir.path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
    return environment.toStringList();
}

WorkbenchProcess::Result WorkbenchProcess::run(const QStringList &arguments, int timeoutMs) const
{
    QProcess process;
    process.setEnvironment(environment());
    process.setWorkingDirectory(m_dir.path());
    process.start(program(), arguments);
    Result result;
    result.ended =
        process.waitForFinished(timeoutMs) && process.exitStatus() == QProcess::NormalExit;
    if (!result.ended) {
        process.kill();
        process.waitForFinished();
    }
    result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

QString WorkbenchProcess::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("a test file could not be written");
    }
    return file.fileName();
}
