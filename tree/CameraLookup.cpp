#include "tree/CameraLookup.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"

QCameraTask *cameraTaskOf(long int cameraId)
{
    QTaskManager *manager = cameraId == NO_CAMERA_ID ? nullptr : QTaskManager::Instance();
    QCameraBasicTask *basicTask = manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
    return basicTask ? basicTask->_CameraTak() : nullptr;
}
