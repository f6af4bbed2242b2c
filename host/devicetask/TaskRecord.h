#pragma once

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QChannelTask.h"
#include "DeviceTaskModule/VexaCameraTranslator.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/DeviceFacts.h"

#include <QString>

#include <atomic>
#include <memory>
#include <mutex>

/// Everything of one opened camera that raw pointers are handed out to. Shared by the registry and by the rings of
/// the threads that looked it up (TaskRing); it holds no connection, so it may outlive the closing at no cost to the
/// device. Any thread.
class TaskRecord : public std::enable_shared_from_this<TaskRecord>
{
public:
    TaskRecord(long int id, const DeviceSource &source, const DeviceFacts &facts,
               unsigned int accessMode);
    ~TaskRecord();
    TaskRecord(const TaskRecord &) = delete;
    TaskRecord &operator=(const TaskRecord &) = delete;

    QString name() const;
    void setName(const QString &name);

    const long int m_nId;
    const DeviceSource m_source; ///< for another opening
    const QString m_strModel;
    const QString m_strSerial;
    const quint32 m_nIpv4;
    const unsigned int m_nDeviceType;
    const unsigned int m_nScanType;
    const unsigned int m_nOptimalPacketSize; ///< bytes

    std::atomic<unsigned int> m_nAccessMode; ///< 4 control, 2 another host controls the device
    std::atomic<bool> m_bRestarted{
        false}; ///< told to restart or to forget its settings since the last opening
    std::atomic<int> m_nTold{
        0}; ///< the DeviceCondition that was last told; of the CameraHost's thread
    std::atomic<int> m_nState{TASK_CAMERA_OPEN};
    std::atomic<int> m_nTriggerMode{0};
    std::atomic<bool> m_bPromptSuppressed{false};

    std::unique_ptr<QCameraBasicTask> m_pBasicTask;
    std::unique_ptr<QCameraTask> m_pCameraTask;
    std::unique_ptr<VexaCameraTranslator> m_pTranslator; ///< null without translations
    QChannelTask m_channel;

private:
    mutable std::mutex m_nameMutex;
    QString m_strName;
};
