#pragma once

#include <QString>

struct EditJob;
class VexaFeatureTree;

/// One write or one command of the command line, on the road of the tree's own editors: through the model of its view,
/// with all that the tree does before and after. Boxes that the tree shows run events.
namespace FeatureEdit {

/// False with a translated reason when the text or the feature was refused or the device did not take it. True says
/// that the tree is content: a rule of its own may have kept the write from the device.
bool perform(VexaFeatureTree &tree, const EditJob &job, QString *reason);
/// What the tree shows for the feature, empty for an unknown one.
QString shownValue(const VexaFeatureTree &tree, const QString &name);
/// Whether the feature holds the value of this write, as it was read last.
bool holds(const VexaFeatureTree &tree, const EditJob &job);
/// Whether the command takes the device away for a while.
bool restartsDevice(const EditJob &job);

} // namespace FeatureEdit
