#pragma once

#include "model/FeatureFileValues.h"

/// Puts the text of a feature file on the disk. Both say why in `detail` when it is not there. A file that could be
/// opened and is empty afterwards, not whole, or on a full disk is deleted.
namespace FeatureFileStore {

FeatureFileFailure writeFile(const QString &path, const QString &text, QString *detail);
/// Adds a record to a bag. One bag may get the records of several devices at once. The deletion takes the whole bag.
FeatureFileFailure appendToBag(const QString &path, const QString &serialNumber,
                               const QString &text, QString *detail);

} // namespace FeatureFileStore
