#pragma once

#include "host/simulator/BuiltInDevice.h"
#include "host/simulator/sfnc/CameraBasics.h"

struct DeviceFile;

constexpr int kLineCameraUserSets = 4;

/// A line-scan camera with USB3 Vision interface: line rates, an encoder, a look-up table.
BuiltInDevice makeLineCamera(int instance);
/// Its table alone.
FeatureTable lineCameraTable(const CameraInfo &info);
/// Its files.
QVector<DeviceFile> lineCameraFiles();
