#pragma once

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "host/devicetask/DeviceConnection.h"

#include <memory>
#include <mutex>

class TaskRecord;

class QCameraBasicTask::Private
{
public:
    TaskRecord *m_pRecord = nullptr; ///< owns the task
};

/// The way from the contract's operations to the connection, with the failure kept for the calling thread.
class QCameraTask::Private
{
public:
    Private(TaskRecord *record, const std::shared_ptr<DeviceConnection> &connection);

    std::shared_ptr<DeviceConnection> connection() const;
    std::shared_ptr<DeviceConnection> takeConnection();

    /// Runs `work` (DeviceError(const GcSession &)) on the device; `task` is the owner of this object.
    template<class Work>
    bool access(const QCameraTask &task, int *error, Work &&work)
    {
        // Keeps record and task until the call is over, even when the thread got its pointer from another.
        const std::shared_ptr<TaskRecord> keep = enter();
        const std::shared_ptr<DeviceConnection> device = connection();
        const DeviceError result = device ? device->run(task.m_bReleasing, work) : closed();
        return finish(result, error);
    }
    /// The same for an operation that ends before it reaches the device.
    bool fail(const DeviceError &failure, int *error);

    static DeviceError closed();
    /// Notes the use of the task on this thread.
    std::shared_ptr<TaskRecord> enter() const;
    bool finish(const DeviceError &result, int *error) const;

    TaskRecord *const m_pRecord; ///< owns the task

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<DeviceConnection> m_pConnection;
};
