#include "host/devicetask/CameraTaskFactory.h"

#include "host/devicetask/DeviceConnection.h"
#include "host/devicetask/QCameraTaskPrivate.h"
#include "host/devicetask/TaskRecord.h"
#include "host/devicetask/VexaCameraTranslatorPrivate.h"

QTaskManager *CameraTaskFactory::manager()
{
    static auto *const s_pManager = new QTaskManager;
    return s_pManager;
}

std::shared_ptr<TaskRecord> CameraTaskFactory::makeRecord(
    long int id, const DeviceSource &source, const DeviceFacts &facts, unsigned int accessMode,
    const std::shared_ptr<DeviceConnection> &connection)
{
    auto record = std::make_shared<TaskRecord>(id, source, facts, accessMode);
    auto basic = std::make_unique<QCameraBasicTask::Private>();
    basic->m_pRecord = record.get();
    record->m_pBasicTask.reset(new QCameraBasicTask(std::move(basic)));
    record->m_pCameraTask.reset(
        new QCameraTask(std::make_unique<QCameraTask::Private>(record.get(), connection)));
    if (auto texts = VexaCameraTranslator::Private::fromJson(source.translations, facts.name)) {
        record->m_pTranslator.reset(new VexaCameraTranslator(std::move(texts)));
    }
    return record;
}

std::shared_ptr<DeviceConnection> CameraTaskFactory::connection(const TaskRecord &record)
{
    return record.m_pCameraTask->d->connection();
}

std::shared_ptr<DeviceConnection> CameraTaskFactory::exchangeConnection(
    TaskRecord &record, std::shared_ptr<DeviceConnection> connection)
{
    return record.m_pCameraTask->d->exchangeConnection(std::move(connection));
}
