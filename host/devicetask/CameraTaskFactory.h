#pragma once

#include "DeviceTaskModule/QTaskManager.h"
#include "host/devicetask/QTaskManagerPrivate.h"

#include <memory>

class DeviceConnection;
class TaskRecord;
struct DeviceFacts;
struct DeviceSource;

/// Makes the contract's objects, whose constructors are closed to everybody else, and reaches their insides for the
/// CameraHost. Any thread.
class CameraTaskFactory
{
public:
    /// The registry of the process; never freed, since raw pointers to it may be anywhere.
    static QTaskManager *manager();
    static QTaskManager::Private &registry() { return *manager()->d; }

    /// A record with all its objects, not entered yet.
    static std::shared_ptr<TaskRecord> makeRecord(
        long int id, const DeviceSource &source, const DeviceFacts &facts, unsigned int accessMode,
        const std::shared_ptr<DeviceConnection> &connection);
    static std::shared_ptr<DeviceConnection> connection(const TaskRecord &record);
    /// Gives the task another connection, or with null none: every operation fails from then on. Returns the former.
    static std::shared_ptr<DeviceConnection> exchangeConnection(
        TaskRecord &record, std::shared_ptr<DeviceConnection> connection);
};
