#include "host/simulator/SimulatedDevices.h"

#include "host/devicetask/CameraHost.h"
#include "host/simulator/DeviceCore.h"
#include "host/simulator/SimulatorDevice.h"
#include "host/simulator/SparseMemory.h"
#include "host/simulator/areacamera/AreaCamera.h"
#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/grabbercamera/GrabberCamera.h"
#include "host/simulator/linecamera/LineCamera.h"

#include <QXmlStreamReader>

#include <optional>

namespace {

constexpr quint32 kFirstAddress = 0xC0A80A65; // 192.168.10.101

struct BuiltInRow
{
    const char *id;
    BuiltInDevice (*make)(int instance);
    bool isListed = true;
};

const BuiltInRow kBuiltIn[] = {
    {"area-camera", makeAreaCamera},
    {"code-reader", makeCodeReader},
    {"code-reader-older", makeOlderCodeReader, false},
    {"code-reader-16", [](int instance) { return makeCodeReaderOfProduct(instance, 16); }, false},
    {"code-reader-17", [](int instance) { return makeCodeReaderOfProduct(instance, 17); }, false},
    {"code-reader-without-tuning", makeCodeReaderWithoutTuning, false},
    {"line-camera", makeLineCamera},
    {"grabber-camera", makeGrabberCamera},
};

std::shared_ptr<DeviceSource> sourceOf(const std::shared_ptr<DeviceCore> &core)
{
    auto source = std::make_shared<DeviceSource>();
    source->create = [core](GError **error) { return newSimulatorDevice(core, error); };
    source->controls = [core](ArvDevice *) { return !core->isControlledElsewhere(); };
    return source;
}

std::optional<BuiltInDevice> madeDevice(const QString &id, int instance)
{
    for (const BuiltInRow &row : kBuiltIn) {
        if (id == QLatin1String(row.id)) {
            return row.make(instance);
        }
    }
    if (const std::optional<ReaderLight> light = readerLightOf(id)) {
        return makeCodeReaderWithLight(*light, instance);
    }
    return std::nullopt;
}

QString modelOf(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("RegisterDescription")) {
            return reader.attributes().value(QLatin1String("ModelName")).toString();
        }
    }
    return {};
}

} // namespace

QStringList SimulatedDevices::builtInIds()
{
    QStringList ids;
    for (const BuiltInRow &row : kBuiltIn) {
        if (row.isListed) {
            ids.append(QString::fromLatin1(row.id));
        }
    }
    return ids;
}

SimulatedDevices::Simulated SimulatedDevices::builtIn(const QString &id, int instance)
{
    std::optional<BuiltInDevice> made = madeDevice(id, instance);
    if (!made) {
        return {};
    }
    BuiltInDevice &device = *made;
    const auto core = std::make_shared<DeviceCore>(
        device.m_description, std::move(device.m_pMemory), std::move(device.m_pBehaviour));
    const auto source = sourceOf(core);
    source->id = id;
    source->name = QStringLiteral("%1 (%2)").arg(device.m_strModel, device.m_strSerial);
    source->model = device.m_strModel;
    source->serial = device.m_strSerial;
    source->ipv4 = device.m_nIpv4;
    source->deviceType = device.m_nDeviceType;
    source->scanType = device.m_nScanType;
    source->translations = device.m_translations;
    return {core, source};
}

SimulatedDevices::Simulated SimulatedDevices::fromDescription(
    const QByteArray &xml, const QString &name, SimulatorControl::MemoryPattern pattern)
{
    const auto core = std::make_shared<DeviceCore>(xml, std::make_unique<SparseMemory>(pattern),
                                                   std::make_unique<DeviceBehaviour>());
    const auto source = sourceOf(core);
    const QString model = modelOf(xml);
    // The same file gets the same serial number, so that what a host keeps by it is found again.
    const uint checksum = qChecksum(xml.constData(), uint(xml.size()));
    source->id = name;
    source->name = name;
    source->model = model.isEmpty() ? name : model;
    source->serial = QStringLiteral("XML%1").arg(checksum, 8, 10, QLatin1Char('0'));
    source->ipv4 = kFirstAddress + 99;
    return {core, source};
}
