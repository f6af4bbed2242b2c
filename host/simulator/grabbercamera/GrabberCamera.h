#pragma once

#include "host/simulator/BuiltInDevice.h"
#include "host/simulator/sfnc/CameraBasics.h"

constexpr int kGrabberCameraUserSets = 4;

/// An area-scan camera behind a Camera Link frame grabber. Its serial number is that of the grabber's board, so the
/// first two instances, which sit on the two ports of one board, share it.
BuiltInDevice makeGrabberCamera(int instance);
/// Its table alone.
FeatureTable grabberCameraTable(const CameraInfo &info);
