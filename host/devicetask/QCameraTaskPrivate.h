#pragma once

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "host/devicetask/DeviceConnection.h"
#include "host/devicetask/FileTransfer.h"

#include <functional>
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
    /// Puts a connection (null for none) in the place of the present one, which is returned.
    std::shared_ptr<DeviceConnection> exchangeConnection(
        std::shared_ptr<DeviceConnection> connection);

    /// Has `work` (DeviceError(const DeviceSession &, Result *)) done on the connection's thread; `task` is the owner
    /// of this object. `work` must own all that it touches.
    template<class Result, class Work>
    DeviceError call(const QCameraTask &task, Result *out, Work work)
    {
        observe();
        const std::shared_ptr<DeviceConnection> device = connection();
        return device ? device->call(task.m_bReleasing, out, std::move(work)) : closed();
    }
    /// The same for a read of a node; `work` is DeviceError(const DeviceSession &, const QByteArray &node, Result *).
    template<class Result, class Work>
    DeviceError call(const QCameraTask &task, const HeldValues::Question &question, Result *out,
                     Work work)
    {
        observe();
        const std::shared_ptr<DeviceConnection> device = connection();
        return device ? device->read(question, task.m_bReleasing, out,
                                     [node = question.node, work = std::move(work)](
                                         const DeviceSession &session, Result *result) {
                                         return work(session, node, result);
                                     })
                      : closed();
    }
    /// A read of a node: the call with its failure noted. A null `out` is a failure.
    template<class Result, class Work>
    bool read(const QCameraTask &task, const HeldValues::Question &question, int *error,
              Result *out, Work work)
    {
        // Keeps record and task until the call is over, even when the thread got its pointer from another.
        const std::shared_ptr<TaskRecord> keep = enter();
        return finish(out ? call(task, question, out, std::move(work)) : noPlace(), error);
    }
    /// A read of something else.
    template<class Result, class Work>
    bool read(const QCameraTask &task, int *error, Result *out, Work work)
    {
        const std::shared_ptr<TaskRecord> keep = enter();
        return finish(out ? call(task, out, std::move(work)) : noPlace(), error);
    }
    /// A write (DeviceError(const DeviceSession &)), refused while another host controls the device.
    template<class Work>
    bool write(const QCameraTask &task, int *error, Work work)
    {
        const std::shared_ptr<TaskRecord> keep = enter();
        DeviceError result = mayWrite();
        if (!result.failed()) {
            struct Nothing
            {
            } nothing;
            result = call(task, &nothing,
                          [work = std::move(work)](const DeviceSession &session, Nothing *) {
                              return work(session);
                          });
        }
        return finish(result, error);
    }
    /// The same for an operation that ends before it reaches the device.
    bool fail(const DeviceError &failure, int *error);

    /// One copy of a file at a time; 0 or the code of its failure.
    int transfer(const QCameraTask &task, const std::function<DeviceError(FileTransfer &)> &run);

    static DeviceError closed();
    static DeviceError noPlace();
    static void observe();
    DeviceError mayWrite() const;
    /// Notes the use of the task on this thread.
    std::shared_ptr<TaskRecord> enter() const;
    bool finish(const DeviceError &result, int *error) const;

    TaskRecord *const m_pRecord; ///< owns the task
    FileProgress m_fileProgress;

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<DeviceConnection> m_pConnection;
};
