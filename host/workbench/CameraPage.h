#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

class VexaFeatureTree;

/// The steps of one camera's page in the feature widget, each in the order that the module asks for. GUI thread.
namespace CameraPage {

/// The page of an open camera, null when there is none.
VexaFeatureTree *tree(long int cameraId);
/// Makes the page of a camera that was just opened and puts it on show. Its tree is still empty.
VexaFeatureTree *make(long int cameraId);
/// Puts the page of this camera on show; -1 is the empty page.
void show(long int cameraId);
/// The buttons over the tree: on as the camera's task state and a job with a feature file allow, or all off.
void setToolBar(long int cameraId, bool on);
/// Whether a feature file is written, checked or applied.
bool hasFileJob(long int cameraId);
/// Takes the page down. Stopping the tree's workers runs events.
void remove(long int cameraId, bool lost);

} // namespace CameraPage
