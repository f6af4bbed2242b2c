#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QString>

#include <memory>

class QCameraTask;

/// The registry's entry for one opened camera: plain facts that need no device access. Any thread.
class DEVICETASKMODULE_API QCameraBasicTask
{
public:
    ~QCameraBasicTask();

    /// The node-level task, null while the camera has none.
    QCameraTask *_CameraTak();
    long int _GetCameraBasicTaskID();
    /// Transport bit code, see DeviceTypeCode.
    unsigned int _GetDevType();
    /// Scan type: 1 area scan, any other value line scan.
    unsigned int _GetCamSacnType();
    /// Display name.
    QString _GetCameraName();
    void _SetCameraName(const QString &name);
    /// GenICam DeviceModelName.
    QString _GetCameraModelName();
    /// GenICam DeviceSerialNumber.
    QString _GetCameraSerialNum();
    /// IPv4 address of a network device in host byte order, 0 for others.
    unsigned int _GetIP();

private:
    friend class CameraTaskFactory;
    class Private;
    explicit QCameraBasicTask(std::unique_ptr<Private> d);
    Q_DISABLE_COPY(QCameraBasicTask)
    std::unique_ptr<Private> d;
};
