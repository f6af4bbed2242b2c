#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QString>

#include <memory>

class QCameraBasicTask;

/// Registry of the opened cameras. All operations may be called on any thread and do not touch a device.
///
/// A task that a look-up returned stays valid memory on the calling thread until that thread looks up eight
/// other cameras or ends; once the camera is closed, every operation on it fails at once.
class DEVICETASKMODULE_API QTaskManager
{
public:
    /// The registry, null before the client has set it up and after it has taken it down.
    static QTaskManager *Instance();

    /// The task of an opened camera or null. For everything that runs on behalf of the tree.
    QCameraBasicTask *GetTaskByIDEx(long int id);
    /// The same look-up.
    QCameraBasicTask *GetTaskByID(long int id);
    /// The task at a position, for walking over all tasks; null out of range.
    QCameraBasicTask *GetTaskByIndex(int index);
    /// Cameras that are open now.
    unsigned int GetTaskCount();
    /// How many opened cameras share this serial number.
    int GetCameraCount(const QString &serialNumber);
    /// True once the task of this camera has been released; false for a camera that was never opened.
    bool IsCameraTaskReleased(long int id);

private:
    friend class CameraTaskFactory;
    class Private;
    QTaskManager();
    ~QTaskManager();
    Q_DISABLE_COPY(QTaskManager)
    std::unique_ptr<Private> d;
};
