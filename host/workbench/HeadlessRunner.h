#pragma once

#include "host/workbench/WorkbenchOptions.h"

#include <QObject>
#include <QStringList>

#include <chrono>

class VexaFeatureTree;
class WorkbenchWindow;

/// The jobs of the command line that end by themselves: it opens the devices, waits for the first full update of each,
/// reads, dumps, takes the picture, and ends. What goes wrong is told in the client's message log.
class HeadlessRunner : public QObject
{
    Q_OBJECT
public:
    /// A device that has not given all its values by then is given up.
    static constexpr std::chrono::seconds FIRST_UPDATE_LIMIT{60};

    HeadlessRunner(WorkbenchWindow &window, const WorkbenchOptions &options,
                   const QStringList &deviceIds,
                   std::chrono::milliseconds limit = FIRST_UPDATE_LIMIT, QObject *parent = nullptr);

    void start();

signals:
    /// 0: all jobs were done; 1: one was refused or failed.
    void finished(int exitCode);

private:
    void onDeviceUpdated(const QString &id);
    void onTimeOut();
    void runJobs();
    bool read(const VexaFeatureTree &tree);
    bool dump(const VexaFeatureTree &tree);
    bool takePicture();
    void fail(const QString &reason);
    void finish(int exitCode);

    WorkbenchWindow &m_window;
    WorkbenchOptions m_options;
    QStringList m_deviceIds;
    QStringList m_waitingFor;
    std::chrono::milliseconds m_limit;
    bool m_bFinished = false;
};
