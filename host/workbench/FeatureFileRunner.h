#pragma once

#include "host/workbench/FeatureFileCall.h"
#include "host/workbench/FeatureFileText.h"
#include "host/workbench/WorkbenchOptions.h"
#include "model/FeatureFileValues.h"

#include <QVector>

#include <functional>
#include <memory>

class StagedFile;

/// The headless jobs with feature files, one at a time: exports to a file or a bag, comparisons, imports. What goes wrong is
/// told in the client's message log, differences go to the standard output. GUI thread.
class FeatureFileRunner : public QObject
{
    Q_OBJECT
public:
    /// `yes`: another software's files are taken, and what differs is applied. `limit`: see FeatureFileCall.
    FeatureFileRunner(bool yes, std::chrono::milliseconds limit, QObject *parent = nullptr);
    ~FeatureFileRunner() override;

    /// Runs a job; only a bag has more than one tree.
    void start(const FeatureFileJob &job, const QVector<VexaFeatureTree *> &trees);

signals:
    /// 0: done; 1: refused, failed, not taken whole, or something differs; 2: a comparison could not be made.
    void finished(int exitCode);

private:
    using Step = void (FeatureFileRunner::*)();

    void startExport(const QVector<VexaFeatureTree *> &trees);
    void takeExport(FeatureFileCall::End end, const VexaFeatureTree *tree);
    void startWithFile();
    /// Finds out what differs, and writes nothing.
    void check(Step next);
    void takeComparison();
    void apply();
    void takeApplied(FeatureFileCall::End end);
    /// Values of features that nothing can write do not count: a file holds what the device measures too.
    void takeSecondCheck();
    /// Of the last check, without the values that a later one of the same name in the file replaces.
    FeatureDifferences lastingDifferences() const;
    bool print(const FeatureDifferences &differences);
    FeatureFileCall *makeCall(VexaFeatureTree &tree);
    QString reasonOf(FeatureFileCall::End end, const VexaFeatureTree *tree) const;
    void fail(FeatureFileCall::End end, const VexaFeatureTree *tree);
    void fail(const QString &reason);
    void finish(int exitCode);

    bool m_bYes;
    std::chrono::milliseconds m_limit;
    FeatureFileJob m_job;
    QPointer<VexaFeatureTree> m_pTree;
    std::unique_ptr<StagedFile> m_staged;
    int m_nToGo = 0; ///< exports under way
    FeatureFileCall::End m_end =
        FeatureFileCall::End::Done; ///< of the exports: the first that is not well
    QString m_strReason; ///< of that one
    QString m_strText;
    FeatureFileText::Content m_content;
    FeatureFileReport m_applied;
    QString m_strLastTold; ///< the last line of the message log
};
