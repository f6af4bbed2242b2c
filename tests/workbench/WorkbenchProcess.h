#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// Runs the real vexa-workbench with a home folder of its own, without a display.
class WorkbenchProcess
{
public:
    struct Result
    {
        bool ended = false; ///< it ended by itself, in time and without a crash
        int exitCode = -1;
        QByteArray out;
        QByteArray err;
    };

    WorkbenchProcess();
    Result run(const QStringList &arguments, int timeoutMs = 90000) const;
    /// A file in the run's own folder.
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QString write(const QString &name, const QByteArray &bytes) const;
    /// Environment of a run: no display, settings and data below this folder.
    QStringList environment() const;
    static QString program();

private:
    QTemporaryDir m_dir;
};
