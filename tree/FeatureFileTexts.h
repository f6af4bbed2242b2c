#pragma once

#include "model/FeatureFileValues.h"

#include <QString>
#include <QStringList>

/// What the user reads of feature files, in the client's language.
namespace FeatureFileTexts {

/// Text of a result code; empty for one that has none.
QString resultText(quint32 code);
/// Why a job failed; empty when it did not.
QString failureText(FeatureFileFailure failure, const QString &detail);
/// One line for each reason, with the names behind it.
QStringList linesOf(const QList<FeatureFileNote> &notes);
/// The counts of an import and the names that belong to them.
QStringList importLines(const FeatureFileReport &report);
/// What an export could not carry, but without what nobody expects in a file.
QStringList exportLines(const FeatureFileReport &report);

} // namespace FeatureFileTexts
