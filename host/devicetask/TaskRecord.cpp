#include "host/devicetask/TaskRecord.h"

namespace {

/// Payload that one packet of the link carries best.
unsigned int packetSizeOf(unsigned int deviceType)
{
    constexpr unsigned int ETHERNET_FRAME = 1500;
    constexpr unsigned int USB3_BULK_PACKET = 1024;
    return deviceType == DEVICE_TYPE_U3V ? USB3_BULK_PACKET : ETHERNET_FRAME;
}

} // namespace

TaskRecord::TaskRecord(long int id, const DeviceSource &source, const DeviceFacts &facts,
                       unsigned int accessMode)
    : m_nId(id)
    , m_source(source)
    , m_strModel(facts.model)
    , m_strSerial(facts.serial)
    , m_nIpv4(facts.ipv4)
    , m_nDeviceType(facts.deviceType)
    , m_nScanType(facts.scanType)
    , m_nOptimalPacketSize(packetSizeOf(facts.deviceType))
    , m_nAccessMode(accessMode)
    , m_strName(facts.name)
{
}

TaskRecord::~TaskRecord() = default;

QString TaskRecord::name() const
{
    const std::lock_guard<std::mutex> guard(m_nameMutex);
    return m_strName;
}

void TaskRecord::setName(const QString &name)
{
    const std::lock_guard<std::mutex> guard(m_nameMutex);
    m_strName = name;
}
