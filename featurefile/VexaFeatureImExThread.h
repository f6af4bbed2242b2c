#pragma once

#include "featurefile/FeatureJob.h"

#include <QDomDocument>
#include <QMutex>
#include <QQueue>
#include <QThread>

#include <atomic>
#include <memory>
#include <optional>

/// Runs the jobs of feature files of one camera, one at a time. Results are those of the job whose end was taken last,
/// whatever runs meanwhile. GUI thread, but for run.
class VexaFeatureImExThread : public QThread
{
    Q_OBJECT
public:
    /// Numbers of the jobs. Their `path` is a file where no line says otherwise.
    enum Operation : unsigned int {
        OPERATION_TASK_SAVE = 0, ///< the task's own file
        OPERATION_TASK_LOAD = 1,
        OPERATION_TASK_SAVE_SILENT = 2,
        OPERATION_TASK_LOAD_SILENT = 3,
        OPERATION_EXPORT = 4,
        OPERATION_APPLY_FILE = 5,
        OPERATION_EXPORT_TO_BAG = 6,
        OPERATION_APPLY_TEXT = 7, ///< `path` is the XML text
        OPERATION_CHECK_TEXT = 8, ///< `path` is the XML text
        OPERATION_CHECK_FILE = 9
    };

    explicit VexaFeatureImExThread(long int cameraId, QObject *parent = nullptr);
    ~VexaFeatureImExThread() override;

    void setNodes(const QMap<QString, QDomElement> &nodes);
    void setFeatureCategories(const QMap<QString, QString> &categories);
    void setSelectedLinks(const QVector<SelectedLink> &links);
    void setCategoryFeatures(const QStringList &features);
    /// Both do nothing while a job runs.
    void setOperation(unsigned int operation, const QString &path);
    void setOperation(unsigned int operation);
    /// A tree takes the id of the camera that it was opened with.
    void setCameraId(long int cameraId);
    /// Ends the job without a signal and waits for it.
    void stopJob();
    /// Number of the job that was started last.
    quint64 jobNumber() const { return m_nJob; }
    /// The next job that ended, one for each signal, and its results; 0 when it was stopped after that.
    quint64 takeEndedJob();

    unsigned int operation() const { return m_nOperation; }
    quint32 resultCode() const { return m_nResultCode; } ///< of the last import or check
    const FeatureDifferences &diffMap() const { return m_diffs; } ///< of the last check
    const FeatureFileReport &report() const { return m_report; }
    FeatureFileProgress progress() const { return {m_nDone, m_nTotal}; }

Q_SIGNALS:
    void SigEndFeatureImExThread(int operation, bool success);

protected:
    void run() override;

private:
    /// What a job has to tell when it ends.
    struct Outcome
    {
        quint64 job = 0;
        FeatureFileReport report;
        std::optional<quint32> result; ///< of an import
        std::optional<FeatureDifferences> differences; ///< of a check
    };
    bool runOperation(Outcome &outcome);
    bool runTaskJob(bool save);
    bool exportFeatures(bool toBag, Outcome &outcome);
    bool importFeatures(bool compare, Outcome &outcome);
    bool fillJob(FeatureJob *job);
    void takeResults(const Outcome &outcome);

    std::atomic<bool> m_bStop{false};
    long int m_lCameraID;
    unsigned int m_nOperation = 0;
    QString m_strPath;
    QMap<QString, QDomElement> m_nodes;
    QDomDocument m_document; ///< keeps the nodes whole: parents, siblings
    struct Free
    {
        void operator()(void *memory) const;
    };
    std::unique_ptr<void, Free> m_scratch; ///< 1 MiB, taken ahead of any job
    QMap<QString, QString> m_featureCategories;
    QVector<SelectedLink> m_selectedLinks;
    QStringList m_categoryFeatures;
    quint32 m_nResultCode = 0;
    FeatureDifferences m_diffs;
    QMap<QString, QStringList> m_filters;
    FeatureFileReport m_report;
    std::atomic<int> m_nDone{0};
    std::atomic<int> m_nTotal{0};
    std::atomic<quint64> m_nJob{0};
    QMutex m_endedMutex;
    QQueue<Outcome> m_ended;
};
