#pragma once

#include "DeviceTaskModule/QTaskManager.h"

#include <QVector>

#include <atomic>
#include <memory>
#include <mutex>

class TaskRecord;

/// The opened cameras in the order of their opening. Nothing is freed under its mutex.
class QTaskManager::Private
{
public:
    /// Enters a task; its id comes from nextId().
    void add(const std::shared_ptr<TaskRecord> &record);
    /// Takes a task out; null when there is none of that id.
    std::shared_ptr<TaskRecord> take(long int id);
    std::shared_ptr<TaskRecord> find(long int id) const;
    std::shared_ptr<TaskRecord> at(int index) const;
    QVector<long int> ids() const;
    /// Ids are never given twice in a process, so that an old one names nothing else.
    long int nextId() { return ++m_nLastId; }
    long int lastId() const { return m_nLastId; }
    int count(const QString &serialNumber) const;
    int count() const;

    /// Whether a CameraHost lives; QTaskManager::Instance answers null otherwise.
    std::atomic<bool> m_bUp{false};
    std::atomic<void (*)()> m_pCallObserver{nullptr}; ///< CameraHost::setCallObserver

private:
    mutable std::mutex m_mutex;
    QVector<std::shared_ptr<TaskRecord>> m_records;
    std::atomic<long int> m_nLastId{0};
};
