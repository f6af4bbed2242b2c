#include "DeviceTaskModule/QCameraBasicTask.h"

#include "host/devicetask/QCameraTaskPrivate.h"
#include "host/devicetask/TaskRecord.h"

QCameraBasicTask::QCameraBasicTask(std::unique_ptr<Private> data)
    : d(std::move(data))
{
}

QCameraBasicTask::~QCameraBasicTask() = default;

QCameraTask *QCameraBasicTask::_CameraTak()
{
    const TaskRecord &record = *d->m_pRecord;
    return record.m_nState == TASK_CAMERA_CLOSED ? nullptr : record.m_pCameraTask.get();
}

long int QCameraBasicTask::_GetCameraBasicTaskID()
{
    return d->m_pRecord->m_nId;
}

unsigned int QCameraBasicTask::_GetDevType()
{
    return d->m_pRecord->m_nDeviceType;
}

unsigned int QCameraBasicTask::_GetCamSacnType()
{
    return d->m_pRecord->m_nScanType;
}

QString QCameraBasicTask::_GetCameraName()
{
    return d->m_pRecord->name();
}

void QCameraBasicTask::_SetCameraName(const QString &name)
{
    d->m_pRecord->setName(name);
}

QString QCameraBasicTask::_GetCameraModelName()
{
    return d->m_pRecord->m_strModel;
}

QString QCameraBasicTask::_GetCameraSerialNum()
{
    return d->m_pRecord->m_strSerial;
}

unsigned int QCameraBasicTask::_GetIP()
{
    return d->m_pRecord->m_nIpv4;
}
