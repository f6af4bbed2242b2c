#include "host/simulator/areacamera/AreaCamera.h"

#include "host/simulator/areacamera/AreaCameraBehaviour.h"
#include "host/simulator/description/DescriptionWriter.h"
#include "host/simulator/description/FeatureTable.h"
#include "host/simulator/sfnc/DeviceFiles.h"

namespace {

constexpr quint32 kFirstIpv4 = 0xC0A80A65; // 192.168.10.101
constexpr quint64 kFirstMac = 0x0253494D0001; // locally administered
const char *const kModel = "SIM-A2500";

AreaCameraIdentity identityOf(int instance)
{
    AreaCameraIdentity identity;
    identity.m_strSerial = "SIM" + QByteArray::number(instance + 1).rightJustified(8, '0');
    identity.m_strUserId = "Area camera " + QByteArray::number(instance + 1);
    identity.m_network.m_nIpv4 = kFirstIpv4 + quint32(instance);
    identity.m_network.m_nMac = kFirstMac + quint64(instance);
    identity.m_network.m_strModel = kModel;
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
    addEncoderRows(table);
    addChunkEventRows(table);
    addFileAccessRows(table, areaCameraFiles());
    addUserSetRows(table);
    addSequencerRows(table);
    addTransportLayerRows(table, identity);
    return table;
}

QVector<DeviceFile> areaCameraFiles()
{
    QByteArray note;
    for (int line = 0; line < 120; ++line) {
        note += "Line " + QByteArray::number(line) + " of the user file of the simulated camera.\n";
    }
    return {
        {"UserSet1", "User Set 1", "用户参数组1", "UserSet1\nExposureTime=5000\nGain=6.5\n"},
        {"DefectTable", "Defect Table", "坏点表", QByteArray(64, '\x11'), true},
        {"BaseUserSet1", "Base User Set 1", "底座参数组1", "Channel=1\n"},
        {"MultiROI", "Multi ROI", "多区域", "0,0,640,480\n640,480,1280,960\n"},
        {"SECBIN", "SECBIN", "安全文件", QByteArray(4096, '\x5A')},
        {"LicenseNotice", "License Notice", "许可声明", "Notice on the software of the camera.\r\n",
         true},
        {"FeaturesXml", "FeaturesXml", "特征描述", "<Features/>\n", true},
        {"UserFile", "User File", "用户文件", note},
    };
}

BuiltInDevice makeAreaCamera(int instance)
{
    const AreaCameraIdentity identity = identityOf(instance);
    const FeatureTable table = areaCameraTable(identity);
    BuiltInDevice device = builtDevice(
        table,
        {kModel, "Simulated Imaging", "Simulated 5 megapixel area-scan camera",
         "6C1F0A52-3B7D-4E0B-9D0A-5F2B7A1C9E41", "A8D4E9B0-71C2-4C65-8E15-02F6C3B7D9A8"},
        std::make_unique<AreaCameraBehaviour>(table));
    device.m_strSerial = QString::fromLatin1(identity.m_strSerial);
    device.m_nIpv4 = identity.m_network.m_nIpv4;
    return device;
}
