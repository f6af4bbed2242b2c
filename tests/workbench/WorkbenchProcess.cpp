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

QByteArray workbenchDescription(const QStringList &features, const QByteArray &elements)
{
    QByteArray root;
    for (const QString &feature : features) {
        root += "<pFeature>" + feature.toUtf8() + "</pFeature>";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<RegisterDescription ModelName=\"Test\" VendorName=\"Test\" StandardNameSpace=\"None\" "
           "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
           "MajorVersion=\"1\" "
           "MinorVersion=\"0\" SubMinorVersion=\"0\" ToolTip=\"\" ProductGuid=\"1\" "
           "VersionGuid=\"1\" "
           "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n<Category Name=\"Root\">"
        + root + "</Category>\n" + elements + "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
}
