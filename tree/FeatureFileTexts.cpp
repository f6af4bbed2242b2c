#include "tree/FeatureFileTexts.h"

#include "tree/WriteMessages.h"

#include <algorithm>

namespace {

using WriteMessages::translated;

struct ResultRow
{
    quint32 code;
    const char *key;
};

/// Another software's version shows the text of an unreadable file.
const ResultRow RESULTS[] = {{FEATURE_FILE_NO_DEVICE, "lang_qfeaturetree_nodevice"},
                             {FEATURE_FILE_UNREADABLE, "lang_qfeaturetree_fileerror"},
                             {FEATURE_FILE_NO_FEATURES, "lang_qfeaturetree_xmlerror"},
                             {FEATURE_FILE_VERSION, "lang_qfeaturetree_fileerror"},
                             {FEATURE_FILE_MISMATCH, "lang_qfeaturetree_mismatch"},
                             {FEATURE_FILE_STOPPED, "lang_qfeaturetree_paramerror"}};

struct FailureRow
{
    FeatureFileFailure failure;
    const char *key;
};

const FailureRow FAILURES[] = {{FeatureFileFailure::NoDevice, "lang_qfeaturetree_nodevice"},
                               {FeatureFileFailure::NoFirmware, "lang_qfeaturetree_fail_firmware"},
                               {FeatureFileFailure::Device, "lang_qfeaturetree_fail_device"},
                               {FeatureFileFailure::Memory, "lang_qfeaturetree_fail_memory"},
                               {FeatureFileFailure::Stopped, "lang_qfeaturetree_fail_stopped"},
                               {FeatureFileFailure::Open, "lang_qfeaturetree_fail_open"},
                               {FeatureFileFailure::Write, "lang_qfeaturetree_fail_write"},
                               {FeatureFileFailure::DiskFull, "lang_qfeaturetree_fail_diskfull"}};

struct ReasonRow
{
    FeatureFileReason reason;
    const char *key;
    bool isTold; ///< in the message log of an export
};

const ReasonRow REASONS[] = {
    {FeatureFileReason::Excluded, "lang_qfeaturetree_note_excluded", false},
    {FeatureFileReason::Address, "lang_qfeaturetree_note_address", false},
    {FeatureFileReason::Identity, "lang_qfeaturetree_note_identity", false},
    {FeatureFileReason::Command, "lang_qfeaturetree_note_command", false},
    {FeatureFileReason::Condition, "lang_qfeaturetree_note_condition", false},
    {FeatureFileReason::NoLength, "lang_qfeaturetree_note_nolength", true},
    {FeatureFileReason::Unreadable, "lang_qfeaturetree_note_unreadable", true},
    {FeatureFileReason::TurnSkipped, "lang_qfeaturetree_note_turnskipped", true},
    {FeatureFileReason::Inexact, "lang_qfeaturetree_note_inexact", true},
    {FeatureFileReason::FurtherWords, "lang_qfeaturetree_note_furtherwords", true},
    {FeatureFileReason::FewDigits, "lang_qfeaturetree_note_fewdigits", true},
    {FeatureFileReason::TooLarge, "lang_qfeaturetree_note_toolarge", true},
    {FeatureFileReason::Text, "lang_qfeaturetree_note_text", true},
    {FeatureFileReason::PresentSelection, "lang_qfeaturetree_note_presentselection", true},
    {FeatureFileReason::FileTooLarge, "lang_qfeaturetree_note_filetoolarge", true},
    {FeatureFileReason::NotCarriable, "lang_qfeaturetree_note_notcarriable", true},
    {FeatureFileReason::Refused, "lang_qfeaturetree_note_refused", true},
    {FeatureFileReason::NotTaken, "lang_qfeaturetree_note_nottaken", true},
    {FeatureFileReason::NotWritable, "lang_qfeaturetree_note_notwritable", true}};

bool isNotCarriable(const FeatureFileNote &note)
{
    switch (note.reason) {
    case FeatureFileReason::Excluded:
    case FeatureFileReason::Address:
    case FeatureFileReason::Identity:
    case FeatureFileReason::Text:
    case FeatureFileReason::NotCarriable:
        return true;
    default:
        return false;
    }
}

QString withDetail(const FeatureFileNote &note)
{
    return note.detail.isEmpty() ? note.name
                                 : QStringLiteral("%1 (%2)").arg(note.name, note.detail);
}

QStringList lines(const QList<FeatureFileNote> &notes, bool all)
{
    QStringList texts;
    for (const ReasonRow &row : REASONS) {
        QStringList names;
        for (const FeatureFileNote &note : notes) {
            if (note.reason == row.reason && (all || row.isTold)) {
                names += withDetail(note);
            }
        }
        names.removeDuplicates();
        if (!names.isEmpty()) {
            texts += translated(row.key).arg(names.join(QLatin1String(", ")));
        }
    }
    return texts;
}

} // namespace

QString FeatureFileTexts::resultText(quint32 code)
{
    const auto *const row = std::find_if(std::begin(RESULTS), std::end(RESULTS),
                                         [code](const ResultRow &r) { return r.code == code; });
    return row == std::end(RESULTS) ? QString() : translated(row->key);
}

QString FeatureFileTexts::failureText(FeatureFileFailure failure, const QString &detail)
{
    const auto *const row =
        std::find_if(std::begin(FAILURES), std::end(FAILURES),
                     [failure](const FailureRow &r) { return r.failure == failure; });
    if (row == std::end(FAILURES)) {
        return QString();
    }
    const QString text = translated(row->key);
    return text.contains(QLatin1String("%1")) ? text.arg(detail) : text;
}

QStringList FeatureFileTexts::linesOf(const QList<FeatureFileNote> &notes)
{
    return lines(notes, true);
}

QStringList FeatureFileTexts::importLines(const FeatureFileReport &report)
{
    const auto notCarriable = static_cast<int>(
        std::count_if(report.notImported.cbegin(), report.notImported.cend(), isNotCarriable));
    QStringList texts = {translated("lang_qfeaturetree_importcounts")
                             .arg(report.changed.size())
                             .arg(report.notImported.size() - notCarriable)
                             .arg(notCarriable)};
    if (!report.changed.isEmpty()) {
        texts += translated("lang_qfeaturetree_changedfeatures")
                     .arg(report.changed.join(QLatin1String(", ")));
    }
    return texts + lines(report.notImported, true);
}

QStringList FeatureFileTexts::exportLines(const FeatureFileReport &report)
{
    return lines(report.leftOut, false) + lines(report.remarks, false);
}
