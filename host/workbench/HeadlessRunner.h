#pragma once

#include "host/workbench/FeatureFileRunner.h"
#include "host/workbench/FileCopy.h"
#include "host/workbench/HeadlessBoxes.h"
#include "host/workbench/WorkbenchOptions.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <chrono>

class VexaFeatureTree;
class WorkbenchWindow;

/// The jobs of the command line that end by themselves: it opens the devices, waits for the first full update of each,
/// writes and runs commands one after the other, copies files, imports and exports, reads, dumps, takes the picture,
/// and ends. What goes wrong is told in the client's message log.
class HeadlessRunner : public QObject
{
    Q_OBJECT
public:
    /// A device that has not given all its values by then, at first or after a write, is given up.
    static constexpr std::chrono::seconds FIRST_UPDATE_LIMIT{60};

    HeadlessRunner(WorkbenchWindow &window, const WorkbenchOptions &options,
                   const QStringList &deviceIds,
                   std::chrono::milliseconds limit = FIRST_UPDATE_LIMIT, QObject *parent = nullptr);

    void start();

signals:
    /// 0: all jobs were done; 1: one was refused or failed. Of a comparison: 0 the same, 1 not, 2 it was not made.
    void finished(int exitCode);

private:
    void onDeviceUpdated(const QString &id);
    void onTimeOut();
    void nextJob();
    void perform(VexaFeatureTree &tree);
    /// Of the write that was made last; false when it turns out that the tree kept it from the device.
    bool checkOutcome(const VexaFeatureTree &tree);
    void waitForUpdate();
    VexaFeatureTree *tree(const QString &deviceId) const;
    VexaFeatureTree *tree() const { return tree(m_deviceIds.value(0)); }
    bool hasFurtherJobs() const;
    void startFileJob(const VexaFeatureTree &tree);
    void startFeatureFileJob();
    void takeFeatureFileJob(int exitCode);
    bool listFiles(const VexaFeatureTree &tree);
    void runFinalJobs(const VexaFeatureTree &tree);
    bool read(const VexaFeatureTree &tree);
    bool dump(const VexaFeatureTree &tree);
    bool takePicture();
    void fail(const QString &reason);
    void fail();
    void finish(int exitCode);

    WorkbenchWindow &m_window;
    WorkbenchOptions m_options;
    QStringList m_deviceIds;
    QStringList m_waitingFor;
    std::chrono::milliseconds m_limit;
    QTimer m_limitTimer;
    HeadlessBoxes m_boxes;
    int m_nJob = 0; ///< of the feature jobs: the next one
    int m_nFileJob = 0; ///< the next one
    FileCopy m_fileCopy;
    int m_nFeatureFileJob = 0; ///< the next one
    FeatureFileRunner m_featureFiles;
    int m_nMessages = 0; ///< that were logged so far
    bool m_bWasTold = false; ///< the job made last said something
    bool m_bRestarting = false; ///< a command took the device away; it comes back
    QString m_strFormerValue; ///< what was shown before the write made last
    bool m_bFinished = false;
};
