#pragma once

#include <QString>

class VexaFeatureTree;

namespace NodeWritability {

/// Whether no state of the device lets this feature be written: the GenICam description gives it, or what it stands for,
/// the access mode RO, or computes it. A feature that is locked at present can be written. False for an unknown one.
bool isNeverWritable(const VexaFeatureTree &tree, const QString &name);

} // namespace NodeWritability
