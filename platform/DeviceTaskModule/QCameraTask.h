#pragma once

#include "DeviceTaskModule/ICameraNodeAccess.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>

class QChannelTask;
class QDomDocument;

/// The node-level task of one opened camera. Look it up anew for every operation (QTaskManager): the camera
/// can vanish at any moment. All operations may be called on any thread.
class DEVICETASKMODULE_API QCameraTask : public QObject, public ICameraNodeAccess
{
    Q_OBJECT
public:
    ~QCameraTask() override;

    /// Hands over the device description (GenICam XML) of the open camera; an empty document when there is
    /// none or it was refused. The caller owns a handle of a document that nobody else changes.
    void GetXMLDomDocument(QDomDocument &document);
    /// Drops all cached node values, so that the next reads go to the device. 0 is success.
    int ClearGenIcamBuffers();
    /// The camera's display name.
    QString GetCameraName();
    void SetCameraName(const QString &name);
    /// Asks no device.
    _TASK_CAMERA_STATE_ GetCameraState();
    /// Human text of the last failure of this task on the calling thread; empty when there was none.
    QString GetLastErrorRemark();
    /// Packet size in bytes that the client regards as best for this link (GigE Vision GevSCPSPacketSize).
    unsigned int GetOptimalPacketSize();
    /// True for a device that the client treats as foreign: it gets a full update at acquisition start and stop.
    bool IsOtherCamera();
    /// Loads or saves the settings of the device through the task. 0 is success, else a code with a remark.
    int LoadFeatures(const QString &path);
    int SaveFeatures(const QString &path);
    /// Keeps the task's idea of the trigger mode in step (SFNC TriggerMode: 0 off, 1 on).
    void SetTriggerMode(int mode);
    /// Number of channels; may be 0.
    unsigned int channelCount();
    /// The channel at that index or null; the index is not changed.
    QChannelTask *getChannelTaskById(unsigned int &channel);
    /// The same code as QCameraBasicTask::_GetDevType.
    unsigned int deviceType();

    int GetTaskCameraID() override;
    bool IsPromptSuppressed() override;
    int ReadDeviceFile(const QString &path, const QString &fileName) override;
    int WriteDeviceFile(const QString &path, const QString &fileName) override;
    int GetFileAccessProgress(qint64 *total, qint64 *done) override;
    bool GetIntegerValue(const QString &name, _NODE_INT_VALUE_ *out, int *error, bool report,
                         bool reserved) override;
    bool GetFloatValue(const QString &name, _NODE_FLOAT_VALUE_ *out, int *error, bool report,
                       bool reserved) override;
    bool GetEnumerationValue(const QString &name, _NODE_ENUM_VALUE_ *out, int *error, bool report,
                             bool reserved) override;
    bool GetBooleanValue(const QString &name, bool *out, int *error, bool report,
                         bool reserved) override;
    bool GetStringValue(const QString &name, QString *out, qint64 *maxLength, int *error,
                        bool report, bool reserved) override;
    bool ReadMemory(const qint64 &address, void *buffer, qint64 length, int *error) override;
    bool WriteMemory(const qint64 &address, const void *buffer, qint64 length, int *error) override;
    bool SetIntegerValue(const QString &name, qint64 value, int *error) override;
    bool ExecuteCommand(const QString &name, int *error) override;
    bool SetFloatValue(const QString &name, float value, int *error) override;
    bool SetEnumerationValue(const QString &name, quint32 value, int *error) override;
    bool SetBooleanValue(const QString &name, bool value, int *error) override;
    bool SetStringValue(const QString &name, const QString &value, int *error) override;
    bool InvalidateNode(QString name) override;
    int GetAccessMode(const QString &name, int *error) override;

    /// Last read AcquisitionFrameRate in Hz; the module's update engine stores it, the client shows it.
    std::atomic<float> m_fAcquisitionFrameRate{0.0F};
    /// Last read ResultingFrameRate in Hz.
    std::atomic<float> m_fResultingFrameRate{0.0F};
    /// The task is on its way out: the client sets it before it closes a camera; from then on every device
    /// access fails at once.
    std::atomic<bool> m_bReleasing{false};

private:
    friend class CameraTaskFactory;
    class Private;
    explicit QCameraTask(std::unique_ptr<Private> d);
    std::unique_ptr<Private> d;
};
