#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>

using ArvDevice = struct _ArvDevice;
using GError = struct _GError;

/// Access modes of an opening, as the feature tree knows them.
constexpr unsigned int DEVICE_ACCESS_READ_ONLY = 2; ///< another host controls the device
constexpr unsigned int DEVICE_ACCESS_CONTROL = 4;

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
    bool asksDevice =
        false; ///< name, model, serial number and scan type are read from the device once it is open
    QByteArray translations; ///< JSON: node texts in Chinese, empty when there are none
    /// Makes the device; runs on the thread that opens, under the process-wide mutex. The caller owns the result.
    std::function<ArvDevice *(GError **error)> create;
    /// Whether this host controls the device that it just opened; without it GigE Vision devices are asked and all
    /// others are controlled.
    std::function<bool(ArvDevice *)> controls;
};

/// What is known of an opened device from its answers.
enum class DeviceCondition {
    Live,
    NotResponding, ///< an access failed or hangs; the connection still asks
    Lost, ///< the connection is gone for good: reopenCamera() makes a new one when the device is back
    ControlledElsewhere ///< another host holds control; everything can be read, nothing written
};
Q_DECLARE_METATYPE(DeviceCondition)

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
        unsigned int accessMode = DEVICE_ACCESS_CONTROL;
        /// Of reopenCamera(): the device was told to restart or to forget its settings (DeviceReset,
        /// DeviceFactoryReset, ...) since it was opened last, so nothing that is shown of it holds any more.
        bool restarted = false;
        QString error;
    };

    /// Sets up the registry; one object in a process at a time. The destructor closes every camera and takes
    /// the registry down.
    explicit CameraHost(QObject *parent = nullptr);
    ~CameraHost() override;

    /// Opens a device and enters its task. A description that is empty, larger than 64 MiB or not well-formed
    /// is refused as a whole. May block for as long as the device takes; any thread.
    OpenResult openCamera(const DeviceSource &source);
    /// Gives the task of a lost camera a new connection to its device; id, task and name stay. Fails with a reason
    /// while the device is not back. May block for as long as the device takes; any thread but the GUI's.
    OpenResult reopenCamera(long int cameraId);
    /// Takes the task out of the registry and closes the device once no call is inside it; returns at once, also
    /// when a call hangs in the device.
    void closeCamera(long int cameraId);
    /// Live for an id that is not open.
    DeviceCondition condition(long int cameraId) const;
    /// Task state and TLParamsLocked; AcquisitionStart or AcquisitionStop is run when the device has it. Both talk
    /// to the device and may block for as long as it takes; any thread.
    bool startGrabbing(long int cameraId, QString *error = nullptr);
    bool stopGrabbing(long int cameraId, QString *error = nullptr);
    /// Whether prompts of this task are swallowed (ICameraNodeAccess::IsPromptSuppressed).
    void setPromptSuppressed(long int cameraId, bool suppressed);
    /// Runs on the calling thread at each operation of a task that asks its device; null takes it away. Accesses
    /// themselves run on the connections' threads, so this tells who waits for a device.
    static void setCallObserver(void (*observer)());

Q_SIGNALS:
    /// Comes once a change, on this object's thread, within 3 s of the first access that fails or hangs.
    void conditionChanged(long int cameraId, DeviceCondition condition);
    /// VexaOperateCameraThread was asked to close this camera; on this object's thread.
    void closeRequested(long int cameraId, bool lost);

private:
    class Private;
    Private *d;
};
