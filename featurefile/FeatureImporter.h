#pragma once

#include "featurefile/FeatureFileReader.h"
#include "featurefile/FeatureJob.h"
#include "featurefile/RegisterWords.h"

#include <QSet>

#include <optional>
#include <set>

class QCameraTask;

/// Compares a feature file with a device, or writes it into it, in passes until nothing is left to do. What was
/// written stays written. Lives on the thread of its job.
class FeatureImporter
{
public:
    explicit FeatureImporter(const FeatureJob &job);

    /// With `compare` the file is checked against the device first, and nothing is written; without it nothing is
    /// checked. False when the job ended early; resultCode() says why.
    bool run(const QString &text, bool compare);
    quint32 resultCode() const { return m_nResult; }
    const FeatureDifferences &differences() const { return m_differences; }
    const FeatureFileReport &report() const { return m_report; }

private:
    bool validate(const FeatureFileDocument &document);
    bool boardMatches(const FeatureFileDocument &document);
    bool firmwareMatches(const FeatureFileDocument &document);
    bool runPasses(const FeatureFileDocument &document);
    bool runPass(const FeatureFileDocument &document);
    /// Why an entry is never applied; nothing for one that takes part.
    std::optional<FeatureFileReason> exclusionOf(const FeatureFileEntry &entry) const;
    bool holdsAlready(const QString &name, const QString &type, const QString &value);
    void tellOfExcluded(const FeatureFileDocument &document);
    void tellOfEmpty(const QString &name, const QString &type);
    int setFeatureIntoDevice(const QString &name, const QString &type, const QString &value);
    /// `isKnown` tells whether the device's value could be found out.
    bool compareByRegisters(const QString &name, const QString &type, const QString &value,
                            bool *isKnown);
    void writePlain(const QString &name, const QString &type, const QString &value, int *error);
    void reportTheRest(const FeatureFileDocument &document);
    void tellOfUnsettled(const FeatureFileDocument &document);

    bool importRegisters(const FeatureFileEntry &entry);
    bool isRegisterWritable(const QString &node);
    bool prepareBuffer(const FeatureFileEntry &entry, qint64 *length);
    void tellOfUnwritable(const FeatureFileEntry &entry);
    static bool registerDiffers(const FeatureFileRegister &row, const QString &deviceWords);
    bool readRegister(const FeatureFileRegister &row, qint64 length, QString *deviceWords);
    /// False when the register cannot be read.
    bool compareRegister(const FeatureFileEntry &entry, const FeatureFileRegister &row,
                         qint64 length);
    /// False when the device has gone.
    bool applyRegister(const FeatureFileEntry &entry, const FeatureFileRegister &row,
                       qint64 length);
    void writeRegister(const FeatureFileEntry &entry, const FeatureFileRegister &row,
                       qint64 length);
    bool fillBuffer(const FeatureFileEntry &entry, const FeatureFileRegister &row);
    bool hasTaken(const QString &name, qint64 address, qint64 length);

    bool end(quint32 result);
    /// Takes in whether the device has gone, which ends the job; another reason for a failed access does not. Answers
    /// whether it has.
    bool noteGone(int error);
    void differ(const QString &name, const QString &category, const QString &fileValue,
                const QString &deviceValue);
    void noteWritten(const QString &name);
    void noteNotCarriable(const QString &name, const QString &text);
    void noteRefused(const QString &name, FeatureFileReason reason, const QString &detail);

    const FeatureJob &m_job;
    QCameraTask *m_pTask;
    QStringList m_exclusions;
    EvalContext m_context;
    quint32 m_nResult = FEATURE_FILE_OK;
    bool m_bCompare = false;
    bool m_bGone = false;
    int m_nPass = 0;
    int m_nFailCount = 0;
    int m_nChangedCount = 0;
    bool m_bSwap = false;
    RegisterBuffer m_buffer;

    FeatureDifferences m_differences;
    FeatureFileReport m_report;
    QStringList m_changed; ///< in the order of the first write
    QSet<QString> m_changedSet;
    QList<FeatureFileNote> m_refused; ///< in this pass
    QSet<QString> m_notCarriable;
    std::set<const FeatureFileEntry *> m_unwritable; ///< in this pass; in the file's order
};
