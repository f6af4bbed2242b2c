#pragma once

#include "featurefile/FeatureFileWriter.h"
#include "featurefile/FeatureJob.h"

#include <QSet>

class QCameraTask;

/// Makes the text of a feature file of one device: a value or a register dump of every feature that a category
/// lists, in the order of the node names. Lives on the thread of its job.
class FeatureExporter
{
public:
    explicit FeatureExporter(const FeatureJob &job);

    /// False when the job was stopped, the device does not tell its firmware, or an access failed in a way that is
    /// not the node's own; the report has the reason, but for a stop.
    bool build(QString *text);
    const FeatureFileReport &report() const { return m_report; }

private:
    enum class Step { Next, End };

    /// The job ends at this node, for the task's last error.
    Step endAt(const QString &node);
    bool writeHeader(FeatureFileWriter &writer);
    Step exportNode(const QString &name, const QDomElement &element, FeatureFileWriter &writer);
    Step exportTurn(const QString &name, const QDomElement &element, FeatureFileWriter &writer);
    bool leaveOut(const QString &name, const QDomElement &element);
    bool isConditionMet(const QString &node, Step *step);
    int pollingTurns(Step *step);
    bool selectPollingParameter(int turn, const QString &name, Step *step);
    /// `isDone` tells whether the value is in the file, `remark` what the device said when it is not.
    Step exportValue(const QString &name, const QString &tag, FeatureFileWriter &writer,
                     bool *isDone, QString *remark);
    bool dump(const QString &name, FeatureFileWriter &writer, bool *noLength);
    void remarkOnSelection(const QString &name, const QString &text);
    void remarkOnText(const FeatureFileWriter &writer);

    const FeatureJob &m_job;
    QCameraTask *m_pTask;
    QSet<QString> m_categoryFeatures;
    QStringList m_exclusions;
    EvalContext m_context;
    FeatureFileReport m_report;
};
