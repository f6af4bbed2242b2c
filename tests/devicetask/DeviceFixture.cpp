#include "DeviceFixture.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"

QByteArray describe(const QByteArray &nodes)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<RegisterDescription ModelName=\"M\" VendorName=\"V\" StandardNameSpace=\"None\" "
           "SchemaMajorVersion=\"1\""
           " SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
           "MinorVersion=\"0\""
           " SubMinorVersion=\"0\" ToolTip=\"\" ProductGuid=\"1\" VersionGuid=\"2\""
           " xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">"
           "<Category Name=\"Root\"/><Port Name=\"Device\"/>"
           "<Integer Name=\"Zero\"><Value>0</Value></Integer><Integer "
           "Name=\"One\"><Value>1</Value></Integer>"
        + nodes + "</RegisterDescription>";
}

QByteArray intReg(const QByteArray &name, int address, const QByteArray &mode,
                  const QByteArray &more)
{
    return "<IntReg Name=\"" + name + "\">" + more + "<Address>" + QByteArray::number(address)
        + "</Address><Length>4</Length><AccessMode>" + mode
        + "</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>";
}

DeviceSource sourceOf(const std::shared_ptr<MemoryDeviceState> &state, const QString &serial)
{
    DeviceSource source;
    source.id = QStringLiteral("memory");
    source.name = QStringLiteral("Memory camera");
    source.model = QStringLiteral("M");
    source.serial = serial;
    source.create = [state](GError **) { return newMemoryDevice(state); };
    return source;
}

QCameraTask &taskOf(long int cameraId)
{
    return *QTaskManager::Instance()->GetTaskByIDEx(cameraId)->_CameraTak();
}

DeviceFixture::DeviceFixture(const QByteArray &nodes)
    : m_pState(std::make_shared<MemoryDeviceState>(describe(nodes)))
{
    const CameraHost::OpenResult result = m_host.openCamera(sourceOf(m_pState));
    m_nId = result.cameraId;
    m_strError = result.error;
}
