#pragma once

#include <QString>

/// Puts the text of a feature file on the disk. Both answer false when the file could not be opened; a file that is
/// empty afterwards, not whole, or on a full disk is deleted.
namespace FeatureFileStore {

bool writeFile(const QString &path, const QString &text);
/// Adds a record to a bag. One bag may get the records of several devices at once. The deletion takes the whole bag.
bool appendToBag(const QString &path, const QString &serialNumber, const QString &text);

} // namespace FeatureFileStore
