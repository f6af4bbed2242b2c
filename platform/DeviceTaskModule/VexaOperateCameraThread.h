#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

/// Queue of camera operations on the library's own thread.
class DEVICETASKMODULE_API VexaOperateCameraThread
{
public:
    /// Queues an operation and returns at once; the library tells the client from its own thread. The module
    /// asks for a camera to be closed after its connection was lost. Any thread.
    static void addOperateCamera(_VEXA_OPERATOR_TYPE_ operation, long int cameraId, bool lost);
};
