#pragma once

#include <QtGlobal>

#ifdef DEVICETASKMODULE_BUILD
#define DEVICETASKMODULE_API Q_DECL_EXPORT
#else
#define DEVICETASKMODULE_API Q_DECL_IMPORT
#endif

/// The camera id that means "no camera".
constexpr long int NO_CAMERA_ID = -1;

/// What a camera task is doing (QCameraTask::GetCameraState). Other values change nothing for the module.
enum _TASK_CAMERA_STATE_ {
    TASK_CAMERA_CLOSED = 0, ///< closed or not usable
    TASK_CAMERA_OPEN = 1, ///< open, not grabbing
    TASK_CAMERA_GRABBING = 2 ///< open and grabbing
};

/// Bit codes of the transport (QCameraBasicTask::_GetDevType).
enum DeviceTypeCode : unsigned int {
    DEVICE_TYPE_GIGE = 1,
    DEVICE_TYPE_U3V = 4,
    DEVICE_TYPE_CL = 8,
    DEVICE_TYPE_GIGE_VIRTUAL = 256 ///< GigE too
};

/// Operations of VexaOperateCameraThread; the module asks for the closing of a camera only.
enum _VEXA_OPERATOR_TYPE_ { VEXA_OPERATOR_CLOSE = 1 };

/// An entry of the client's device list. The module never looks inside.
struct _MY_STRUCT_DEVICE_INFO_;
