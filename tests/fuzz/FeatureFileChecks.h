#pragma once

#include "FuzzJob.h"
#include "featurefile/FeatureFileReader.h"

/// What must hold of every feature file and every device.
namespace FeatureFileChecks {

/// A text that the reader takes keeps its limits.
bool parse(const QString &text, FeatureFileDocument *document);
/// What the writer makes of a document comes back, unless it names what does not.
void rewrite(const FeatureFileDocument &document);
/// Checks the file against the device and writes it into it: only a file that can be read writes, only at its own
/// addresses. Whether both went well.
bool import(FuzzJob &fuzz, const QString &text, const FeatureFileDocument *document,
            FeatureFileReport *report);
/// Every value of an imported file that the device has not got is named.
void compareAgain(FuzzJob &fuzz, const QString &text, const FeatureFileReport &report);
/// What an export of the device says is what the device has; what cannot be carried is named.
void exportAll(FuzzJob &fuzz);

} // namespace FeatureFileChecks
