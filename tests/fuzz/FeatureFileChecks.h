#pragma once

#include "FuzzJob.h"
#include "featurefile/FeatureFileReader.h"

/// What must hold of every feature file and every device.
namespace FeatureFileChecks {

/// A text that the reader takes keeps its limits.
bool parse(const QString &text, FeatureFileDocument *document);
/// What the writer makes of a document comes back, unless it names what does not.
void rewrite(const FeatureFileDocument &document);
/// Compares the file with the device, which writes nothing; `document` is null for a file that cannot be read. Whether
/// the file is for this device.
bool check(FuzzJob &fuzz, const QString &text, const FeatureFileDocument *document);
/// Writes the file into the device: only one that can be read, and only at its own addresses. Whether all of it was done.
bool apply(FuzzJob &fuzz, const QString &text, const FeatureFileDocument *document,
           FeatureFileReport *report);
/// Every value of an imported file that the device has not got is named.
void compareAgain(FuzzJob &fuzz, const QString &text, const FeatureFileReport &report);
/// What an export of the device says is what the device has; what cannot be carried is named.
void exportAll(FuzzJob &fuzz);

} // namespace FeatureFileChecks
