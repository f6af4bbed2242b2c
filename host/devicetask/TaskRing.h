#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/TaskRecord.h"

#include <array>
#include <memory>

/// The last eight tasks that one thread looked up or called. They keep the raw pointers valid that the contract
/// hands out, and hold the last failure of each task on this thread. Takes no lock.
class TaskRing
{
public:
    /// The calling thread's ring.
    static TaskRing &ofThread();

    /// Notes the use of a task. The task that falls out is freed here when nobody else holds it, so no lock of the
    /// registry may be held.
    void touch(const std::shared_ptr<TaskRecord> &record);
    void setLastError(long int id, const DeviceError &error);
    QString lastRemark(long int id) const;

private:
    struct Slot
    {
        std::shared_ptr<TaskRecord> record;
        DeviceError lastError;
        quint64 lastUse = 0;
    };
    std::array<Slot, 8> m_slots;
    quint64 m_nUses = 0;
};
