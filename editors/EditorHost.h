#pragma once

class VexaFeatureTree;

/// What custom editors ask of the module around them. GUI thread.
namespace EditorHost {

/// The feature tree of the camera; null for -1 and for a camera that has gone.
VexaFeatureTree *featureTree(long int lCameraID);
/// Notes that the camera on show has changes that it was not asked to keep.
void markCameraModified();

} // namespace EditorHost
