#include "DeviceTaskModule/QChannelTask.h"

QChannelTask::QChannelTask() = default;
QChannelTask::~QChannelTask() = default;

void QChannelTask::SetContainDMCode(bool contains)
{
    m_bContainsDMCode = contains;
}

bool QChannelTask::ContainsDMCode() const
{
    return m_bContainsDMCode;
}
