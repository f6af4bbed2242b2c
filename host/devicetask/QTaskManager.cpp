#include "DeviceTaskModule/QTaskManager.h"

#include "host/devicetask/CameraTaskFactory.h"
#include "host/devicetask/QTaskManagerPrivate.h"
#include "host/devicetask/TaskRecord.h"
#include "host/devicetask/TaskRing.h"

#include <algorithm>

namespace {

QCameraBasicTask *handOut(const std::shared_ptr<TaskRecord> &record)
{
    if (!record) {
        return nullptr;
    }
    TaskRing::ofThread().touch(record);
    return record->m_pBasicTask.get();
}

} // namespace

void QTaskManager::Private::add(const std::shared_ptr<TaskRecord> &record)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_records.append(record);
}

std::shared_ptr<TaskRecord> QTaskManager::Private::take(long int id)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    for (int i = 0; i < m_records.size(); ++i) {
        if (m_records[i]->m_nId == id) {
            return m_records.takeAt(i);
        }
    }
    return nullptr;
}

std::shared_ptr<TaskRecord> QTaskManager::Private::find(long int id) const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    for (const auto &record : m_records) {
        if (record->m_nId == id) {
            return record;
        }
    }
    return nullptr;
}

std::shared_ptr<TaskRecord> QTaskManager::Private::at(int index) const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return index >= 0 && index < m_records.size() ? m_records[index] : nullptr;
}

QVector<long int> QTaskManager::Private::ids() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    QVector<long int> ids;
    for (const auto &record : m_records) {
        ids.append(record->m_nId);
    }
    return ids;
}

int QTaskManager::Private::count(const QString &serialNumber) const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return static_cast<int>(
        std::count_if(m_records.cbegin(), m_records.cend(), [&serialNumber](const auto &record) {
            return record->m_strSerial == serialNumber;
        }));
}

int QTaskManager::Private::count() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_records.size();
}

QTaskManager::QTaskManager()
    : d(std::make_unique<Private>())
{
}

QTaskManager::~QTaskManager() = default;

QTaskManager *QTaskManager::Instance()
{
    QTaskManager *manager = CameraTaskFactory::manager();
    return manager->d->m_bUp ? manager : nullptr;
}

QCameraBasicTask *QTaskManager::GetTaskByIDEx(long int id)
{
    return handOut(d->find(id));
}

QCameraBasicTask *QTaskManager::GetTaskByID(long int id)
{
    return handOut(d->find(id));
}

QCameraBasicTask *QTaskManager::GetTaskByIndex(int index)
{
    return handOut(d->at(index));
}

unsigned int QTaskManager::GetTaskCount()
{
    return static_cast<unsigned int>(d->count());
}

int QTaskManager::GetCameraCount(const QString &serialNumber)
{
    return d->count(serialNumber);
}

bool QTaskManager::IsCameraTaskReleased(long int id)
{
    // An id is given and entered in two steps, so the look-up goes second.
    return id > 0 && id <= d->lastId() && !d->find(id);
}
