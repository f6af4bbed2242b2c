#include "host/devicetask/TaskRing.h"

#include <algorithm>

TaskRing &TaskRing::ofThread()
{
    static thread_local TaskRing t_ring;
    return t_ring;
}

void TaskRing::touch(const std::shared_ptr<TaskRecord> &record)
{
    ++m_nUses;
    Slot *slot = m_slots.begin();
    for (Slot &candidate : m_slots) {
        if (candidate.record == record) {
            candidate.lastUse = m_nUses;
            return;
        }
        if (candidate.lastUse < slot->lastUse) {
            slot = &candidate;
        }
    }
    const Slot oldest = std::exchange(*slot, Slot{record, {}, m_nUses});
}

void TaskRing::setLastError(long int id, const DeviceError &error)
{
    for (Slot &slot : m_slots) {
        if (slot.record && slot.record->m_nId == id) {
            slot.lastError = error;
        }
    }
}

QString TaskRing::lastRemark(long int id) const
{
    for (const Slot &slot : m_slots) {
        if (slot.record && slot.record->m_nId == id) {
            return slot.lastError.remark();
        }
    }
    return {};
}
