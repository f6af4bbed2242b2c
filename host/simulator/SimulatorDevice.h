#pragma once

#include <arv.h>
#include <memory>

class DeviceCore;

/// A new handle of Aravis on a simulated device; null with an error while the device is gone. The caller owns it.
ArvDevice *newSimulatorDevice(const std::shared_ptr<DeviceCore> &core, GError **error);
