#include "host/workbench/FeatureFileRunner.h"

#include "ShellServicesModule/QFunction.h"
#include "UtilityKit/VexaInterface.h"
#include "host/workbench/FeatureBag.h"
#include "host/workbench/FeatureFileTools.h"
#include "host/workbench/NodeWritability.h"
#include "host/workbench/StagedFile.h"
#include "host/workbench/StandardOutput.h"
#include "host/workbench/WorkbenchTexts.h"
#include "tree/VexaFeatureTree.h"

#include <algorithm>

using End = FeatureFileCall::End;

namespace {

constexpr qint64 MAX_RECORD_SIZE = 128LL * 1024 * 1024;

const char *failureKey(FeatureFileJob::Kind kind)
{
    switch (kind) {
    case FeatureFileJob::Kind::Import:
        return "lang_workbench_importfailed";
    case FeatureFileJob::Kind::Compare:
        return "lang_workbench_comparefailed";
    default:
        return "lang_workbench_exportfailed";
    }
}

/// Whether the file ends with this value of the name: of several, the last one stays in the device.
bool isLast(const FeatureDifference &difference, const QHash<QString, QString> &last)
{
    const auto value = last.constFind(difference.name);
    return value == last.constEnd()
        || *value == difference.fileValue
        // A register of one word is shown in hexadecimal.
        || VexaInterface::Int2HexNumberQString(VexaInterface::string2Int(*value))
        == difference.fileValue;
}

} // namespace

FeatureFileRunner::FeatureFileRunner(bool yes, std::chrono::milliseconds limit, QObject *parent)
    : QObject(parent)
    , m_bYes(yes)
    , m_limit(limit)
{
    connect(QFunction::Instance(), &QFunction::messageLogged, this,
            [this](int, const QString &, const QString &text) { m_strLastTold = text; });
}

FeatureFileRunner::~FeatureFileRunner() = default;

void FeatureFileRunner::start(const FeatureFileJob &job, const QVector<VexaFeatureTree *> &trees)
{
    m_job = job;
    m_pTree = trees.first();
    m_strLastTold.clear();
    if (job.kind == FeatureFileJob::Kind::Import || job.kind == FeatureFileJob::Kind::Compare) {
        startWithFile();
    } else {
        startExport(trees);
    }
}

FeatureFileCall *FeatureFileRunner::makeCall(VexaFeatureTree &tree)
{
    auto *call = new FeatureFileCall(tree, m_limit, this);
    connect(call, &FeatureFileCall::ended, call, &QObject::deleteLater);
    return call;
}

void FeatureFileRunner::startExport(const QVector<VexaFeatureTree *> &trees)
{
    m_staged = std::make_unique<StagedFile>(m_job.file);
    // Before any device is read for minutes.
    QString reason;
    if (!m_staged->write(QByteArray(), &reason)) {
        fail(workbenchText("lang_workbench_filetrouble").arg(m_job.file, reason));
        return;
    }
    m_end = End::Done;
    m_strReason.clear();
    m_nToGo = trees.size();
    for (VexaFeatureTree *tree : trees) {
        FeatureFileCall *call = makeCall(*tree);
        connect(call, &FeatureFileCall::ended, this,
                [this, tree = QPointer<VexaFeatureTree>(tree)](End end) { takeExport(end, tree); });
        call->exportTo(m_staged->path());
    }
}

void FeatureFileRunner::takeExport(End end, const VexaFeatureTree *tree)
{
    if (m_end == End::Done && end != End::Done) {
        m_end = end;
        m_strReason = reasonOf(end, tree).replace(m_staged->path(), m_job.file);
        if (m_job.kind == FeatureFileJob::Kind::ExportBag && tree) {
            m_strReason = QStringLiteral("%1: %2").arg(tree->GetCurCameraName(), m_strReason);
        }
    }
    if (--m_nToGo > 0) {
        return;
    }
    const std::unique_ptr<StagedFile> staged = std::move(m_staged);
    if (m_end != End::Done) {
        fail(workbenchText(failureKey(m_job.kind)).arg(m_strReason).trimmed());
        return;
    }
    QString reason;
    bool written = true;
    if (m_job.kind == FeatureFileJob::Kind::Export) {
        // A tree knows silent exports only as records of a bag.
        QByteArray bag;
        QVector<FeatureBag::Record> records;
        written = FeatureFileText::load(staged->path(), MAX_RECORD_SIZE, &bag, &reason)
            && FeatureBag::split(bag, &records, &reason)
            && staged->write(records.first().file, &reason);
    }
    if (!written || !staged->commit(&reason)) {
        fail(workbenchText("lang_workbench_filetrouble").arg(m_job.file, reason));
        return;
    }
    finish(0);
}

void FeatureFileRunner::startWithFile()
{
    QString reason;
    if (!FeatureFileText::load(m_job.file, &m_strText, &reason)
        || !FeatureFileText::parse(m_strText, &m_content, &reason)) {
        fail(workbenchText("lang_workbench_filetrouble").arg(m_job.file, reason));
        return;
    }
    if (!m_content.version.isEmpty() && m_content.version != VexaInterface::softwareVersion()) {
        const QString text =
            workbenchText("lang_workbench_otherversion").arg(m_job.file, m_content.version);
        if (!m_bYes) {
            fail(workbenchText("lang_workbench_declined").arg(text));
            return;
        }
        QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_INFO, QString(), text);
    }
    check(&FeatureFileRunner::takeComparison);
}

void FeatureFileRunner::check(Step next)
{
    FeatureFileCall *call = makeCall(*m_pTree);
    connect(call, &FeatureFileCall::ended, this, [this, next](End end) {
        if (end == End::Done && m_pTree) {
            (this->*next)();
        } else {
            fail(end, m_pTree);
        }
    });
    call->check(m_strText);
}

bool FeatureFileRunner::print(const FeatureDifferences &differences)
{
    QByteArray table;
    for (auto category = differences.cbegin(); category != differences.cend(); ++category) {
        for (const FeatureDifference &difference : *category) {
            table += StandardOutput::tableLine(
                {category.key(), difference.name, difference.fileValue, difference.deviceValue});
        }
    }
    if (!StandardOutput::write(table)) {
        fail(workbenchText("lang_workbench_writefailed").arg(QStringLiteral("-")));
        return false;
    }
    return true;
}

FeatureDifferences FeatureFileRunner::lastingDifferences() const
{
    const QHash<QString, QString> last = FeatureFileText::lastValues(m_content);
    FeatureDifferences lasting;
    const FeatureDifferences all = m_pTree->featureDifferences();
    for (auto category = all.cbegin(); category != all.cend(); ++category) {
        for (const FeatureDifference &difference : *category) {
            if (isLast(difference, last)) {
                lasting[category.key()].append(difference);
            }
        }
    }
    return lasting;
}

void FeatureFileRunner::takeComparison()
{
    const FeatureDifferences differences = lastingDifferences();
    if (!print(differences)) {
        return;
    }
    if (m_job.kind == FeatureFileJob::Kind::Compare) {
        finish(differences.isEmpty() ? FeatureFileTools::COMPARE_SAME
                                     : FeatureFileTools::COMPARE_DIFFERENT);
    } else if (m_bYes) {
        apply();
    } else if (differences.isEmpty()) {
        finish(0);
    } else {
        fail(workbenchText("lang_workbench_notapplied"));
    }
}

void FeatureFileRunner::apply()
{
    FeatureFileCall *call = makeCall(*m_pTree);
    connect(call, &FeatureFileCall::ended, this, &FeatureFileRunner::takeApplied);
    call->import(m_strText);
}

void FeatureFileRunner::takeApplied(End end)
{
    if (end != End::Done || !m_pTree) {
        fail(end, m_pTree);
        return;
    }
    m_applied = m_pTree->featureFileReport();
    check(&FeatureFileRunner::takeSecondCheck);
}

void FeatureFileRunner::takeSecondCheck()
{
    const VexaFeatureTree &tree = *m_pTree;
    const auto counts = [&tree](const QString &name) {
        return !NodeWritability::isNeverWritable(tree, name.section(QLatin1Char('['), 0, 0));
    };
    // What the tree itself found not to be taken stands in the message log, with its reason.
    const auto &notes = m_applied.notImported;
    bool whole = std::none_of(notes.cbegin(), notes.cend(),
                              [&counts](const FeatureFileNote &note) { return counts(note.name); });
    const FeatureDifferences differences = lastingDifferences();
    for (const QList<FeatureDifference> &category : differences) {
        for (const FeatureDifference &difference : category) {
            if (counts(difference.name)) {
                whole = false;
                QFunction::Instance()->InsertMessageLog(
                    MESSAGE_LOG_ERROR, tree.GetCurCameraName(),
                    workbenchText("lang_workbench_nottaken")
                        .arg(difference.name, difference.fileValue, difference.deviceValue));
            }
        }
    }
    finish(whole ? 0 : 1);
}

QString FeatureFileRunner::reasonOf(End end, const VexaFeatureTree *tree) const
{
    switch (end) {
    case End::Failed: {
        const QString reason = tree ? tree->featureFileFailure() : QString();
        // An import that is over before it began has left its reason in the log.
        return reason == m_strLastTold ? QString() : reason;
    }
    case End::Stuck:
        return workbenchText("lang_workbench_filejobstuck")
            .arg(std::chrono::duration<double>(m_limit).count());
    case End::TreeGone:
        return workbenchText("lang_workbench_lost");
    default:
        return workbenchText("lang_workbench_filejobunsaid");
    }
}

void FeatureFileRunner::fail(End end, const VexaFeatureTree *tree)
{
    fail(workbenchText(failureKey(m_job.kind)).arg(reasonOf(end, tree)).trimmed());
}

void FeatureFileRunner::fail(const QString &reason)
{
    QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_ERROR, QString(), reason);
    finish(m_job.kind == FeatureFileJob::Kind::Compare ? FeatureFileTools::COMPARE_TROUBLE : 1);
}

void FeatureFileRunner::finish(int exitCode)
{
    m_staged.reset();
    emit finished(exitCode);
}
