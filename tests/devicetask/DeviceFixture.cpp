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

SimulatedDevices::Simulated deviceWith(const QByteArray &xml)
{
    const SimulatedDevices::Simulated device = SimulatedDevices::fromDescription(
        xml, "Test camera", SimulatorControl::MemoryPattern::Zero);
    device.source->serial = QStringLiteral("S1");
    device.control->setLogging(true);
    return device;
}

std::shared_ptr<std::atomic<int>> livingOf(DeviceSource &source)
{
    using Count = std::shared_ptr<std::atomic<int>>;
    const auto count = std::make_shared<std::atomic<int>>(0);
    source.create = [count, create = source.create](GError **error) {
        ArvDevice *device = create(error);
        const auto gone = +[](gpointer data, GObject *) {
            const std::unique_ptr<Count> counter(static_cast<Count *>(data));
            --**counter;
        };
        if (device) {
            ++*count;
            g_object_weak_ref(G_OBJECT(device), gone, new Count(count));
        }
        return device;
    };
    return count;
}

QCameraTask &taskOf(long int cameraId)
{
    return *QTaskManager::Instance()->GetTaskByIDEx(cameraId)->_CameraTak();
}

DeviceFixture::DeviceFixture(const QByteArray &nodes)
    : m_device(deviceWith(describe(nodes)))
    , m_pLiving(livingOf(*m_device.source))
{
    m_nId = m_host.openCamera(*m_device.source).cameraId;
}

void DeviceFixture::setFailing(int deviceError) const
{
    for (const quint64 address : {0, 16}) {
        control().setFailing(address, deviceError);
    }
}
