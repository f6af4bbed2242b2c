#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>

using ArvDevice = struct _ArvDevice;
using GError = struct _GError;

/// How one device is reached and what the registry tells of it. GigE Vision, USB3 Vision and simulated devices
/// differ in nothing else.
struct DeviceSource
{
    QString id; ///< what the user names it by, "area-camera"
    QString name; ///< display name before DeviceUserID is known
    QString model; ///< GenICam DeviceModelName
    QString serial; ///< GenICam DeviceSerialNumber
    quint32 ipv4 = 0; ///< host byte order, 0 for devices without a network
    unsigned int deviceType = DEVICE_TYPE_GIGE;
    unsigned int scanType = 1; ///< 1 area scan, 4 line scan
    bool foreign = false; ///< see QCameraTask::IsOtherCamera
    QByteArray translations; ///< JSON: node texts in Chinese, empty when there are none
    /// Makes the device; runs on the thread that opens, under the process-wide mutex. The caller owns the result.
    std::function<ArvDevice *(GError **error)> create;
};

/// The side of this library that a host application drives: it opens, closes and watches cameras. The module
/// never includes this header. GUI thread, except where a line says otherwise.
class DEVICETASKMODULE_API CameraHost : public QObject
{
    Q_OBJECT
public:
    /// Result of an opening; `cameraId` is -1 when it was refused and `error` says why.
    struct OpenResult
    {
        long int cameraId = NO_CAMERA_ID;
        unsigned int accessMode = 4; ///< 4 control, 2 read only: another host controls the device
        QString error;
    };

    /// Sets up the registry; one object in a process at a time. The destructor closes every camera and takes
    /// the registry down.
    explicit CameraHost(QObject *parent = nullptr);
    ~CameraHost() override;

    /// Opens a device and enters its task. A description that is empty, larger than 64 MiB or not well-formed
    /// is refused as a whole. May block for as long as the device takes; any thread.
    OpenResult openCamera(const DeviceSource &source);
    /// Takes the task out of the registry and closes the device once no call is inside it; does not wait for
    /// a call that hangs in the device.
    void closeCamera(long int cameraId);
    /// Task state and TLParamsLocked; AcquisitionStart or AcquisitionStop is run when the device has it.
    bool startGrabbing(long int cameraId, QString *error = nullptr);
    bool stopGrabbing(long int cameraId, QString *error = nullptr);
    /// Whether prompts of this task are swallowed (ICameraNodeAccess::IsPromptSuppressed).
    void setPromptSuppressed(long int cameraId, bool suppressed);

Q_SIGNALS:
    /// The device is gone; comes once a loss, on this object's thread.
    void cameraLost(long int cameraId);
    /// VexaOperateCameraThread was asked to close this camera; on this object's thread.
    void closeRequested(long int cameraId, bool lost);

private:
    class Private;
    Private *d;
};
