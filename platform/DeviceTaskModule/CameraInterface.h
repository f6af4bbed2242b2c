#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QString>

namespace CameraInterface {

/// An error code of the device layer as text for messages and logs: 8 hexadecimal digits ("0x90006104"),
/// with the meaning of a known code behind it when `withRemark` is true. Any thread.
DEVICETASKMODULE_API QString GenerateSDKCode(int errorCode, bool withRemark);

} // namespace CameraInterface
