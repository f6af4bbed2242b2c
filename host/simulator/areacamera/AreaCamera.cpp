#include "host/simulator/areacamera/AreaCamera.h"

#include "host/simulator/MappedMemory.h"
#include "host/simulator/areacamera/AreaCameraBehaviour.h"
#include "host/simulator/description/DescriptionWriter.h"
#include "host/simulator/description/FeatureTable.h"
#include "host/simulator/description/TranslationWriter.h"

namespace {

constexpr quint32 kFirstIpv4 = 0xC0A80A65; // 192.168.10.101
constexpr quint64 kFirstMac = 0x0253494D0001; // locally administered
const char *const kModel = "SIM-A2500";

AreaCameraIdentity identityOf(int instance)
{
    AreaCameraIdentity identity;
    identity.m_strSerial = "SIM" + QByteArray::number(instance + 1).rightJustified(8, '0');
    identity.m_strUserId = "Area camera " + QByteArray::number(instance + 1);
    identity.m_nIpv4 = kFirstIpv4 + quint32(instance);
    identity.m_nMac = kFirstMac + quint64(instance);
    return identity;
}

} // namespace

FeatureTable areaCameraTable(const AreaCameraIdentity &identity)
{
    FeatureTable table;
    addDeviceRows(table, identity);
    addImageFormatRows(table);
    addAcquisitionRows(table);
    addAnalogRows(table);
    addCorrectionRows(table);
    addDigitalIoRows(table);
    addCounterTimerRows(table);
    addChunkEventRows(table);
    addFileAccessRows(table);
    addUserSetRows(table);
    addTransportLayerRows(table, identity);
    return table;
}

BuiltInDevice makeAreaCamera(int instance)
{
    const AreaCameraIdentity identity = identityOf(instance);
    const FeatureTable table = areaCameraTable(identity);
    auto memory = std::make_unique<MappedMemory>();
    for (const RegisterRow &row : table.registers()) {
        memory->map(row.m_nAddress, row.m_initial);
    }
    BuiltInDevice device;
    device.m_description = writtenDescription(
        table,
        {kModel, "Simulated Imaging", "Simulated 5 megapixel area-scan camera",
         "6C1F0A52-3B7D-4E0B-9D0A-5F2B7A1C9E41", "A8D4E9B0-71C2-4C65-8E15-02F6C3B7D9A8"});
    device.m_translations = writtenTranslations(table);
    device.m_pBehaviour = std::make_unique<AreaCameraBehaviour>(table);
    device.m_pMemory = std::move(memory);
    device.m_strModel = QString::fromLatin1(kModel);
    device.m_strSerial = QString::fromLatin1(identity.m_strSerial);
    device.m_nIpv4 = identity.m_nIpv4;
    return device;
}
