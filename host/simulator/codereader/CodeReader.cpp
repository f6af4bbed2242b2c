#include "host/simulator/codereader/CodeReader.h"

#include "host/simulator/codereader/CodeReaderBehaviour.h"
#include "host/simulator/description/DescriptionWriter.h"
#include "host/simulator/sfnc/DeviceFiles.h"

#include <QRegularExpression>

namespace {

constexpr quint32 kFirstIpv4 = 0xC0A80A78; // 192.168.10.120
constexpr quint64 kFirstMac = 0x0253494D4001; // locally administered
const char *const kModel = "SIM-R400";
const char *const kOlderModel = "SIM-R300";

CodeReaderIdentity identityOf(int instance, const char *model)
{
    // The older ones stand a little further up.
    const quint32 number = quint32(instance) + (model == kModel ? 0 : 64);
    CodeReaderIdentity identity;
    identity.m_strSerial =
        (model == kModel ? "SIR" : "SIQ") + QByteArray::number(instance + 1).rightJustified(8, '0');
    identity.m_strUserId = "Reader " + QByteArray::number(instance + 1);
    identity.m_network.m_nIpv4 = kFirstIpv4 + number;
    identity.m_network.m_nMac = kFirstMac + number;
    identity.m_network.m_strModel = model;
    return identity;
}

BuiltInDevice built(const FeatureTable &table, const CodeReaderIdentity &identity)
{
    BuiltInDevice device = builtDevice(
        table,
        {identity.m_network.m_strModel, "Simulated Imaging",
         "Simulated code reader with a light of several segments",
         "0E6B4C1F-52A7-4F0C-8B39-6D1E7A94C2B5", "D27F9A83-1C4E-4B60-9E75-3A8C0F6B15D4"},
        std::make_unique<CodeReaderBehaviour>(table, identity.m_light));
    device.m_strSerial = QString::fromLatin1(identity.m_strSerial);
    device.m_nIpv4 = identity.m_network.m_nIpv4;
    return device;
}

} // namespace

FeatureTable codeReaderTable(const CodeReaderIdentity &identity)
{
    FeatureTable table;
    addReaderDeviceRows(table, identity);
    addReaderImageRows(table);
    addReaderAcquisitionRows(table);
    addReaderTriggerRows(table);
    addReaderIoRows(table);
    addReaderCodeRows(table);
    addReaderAlgorithmRows(table);
    addReaderQualityRows(table);
    addReaderLightingRows(table, identity.m_light);
    addReaderFocusRows(table);
    addReaderPollingRows(table);
    addReaderCommunicationRows(table);
    addReaderOutputTextRows(table);
    addReaderFormatRows(table);
    addReaderTriggerTextRows(table);
    addReaderScreenRows(table);
    addReaderUserSetRows(table);
    addFileAccessRows(table, codeReaderFiles());
    addReaderTransportRows(table, identity);
    return table;
}

QVector<DeviceFile> codeReaderFiles()
{
    QByteArray license;
    for (int line = 1; line <= 60; ++line) {
        license += "Notice " + QByteArray::number(line) + " on the software of the reader.\r\n";
    }
    return {
        {"UserSet1", "User Set 1", "用户参数组1", "ExposureTime=800\nGain=6\n"},
        {"BaseUserSet1", "Base User Set 1", "底座参数组1", "Channel=3\n"},
        {"MultiROI", "Multi ROI", "多区域", "0,0,320,240\n16,8,320,256\n"},
        {"SECBIN", "SECBIN", "安全文件", QByteArray(4096, '\x5A')},
        {"LicenseNotice", "License Notice", "许可声明", license, true},
        {"FeaturesXml", "FeaturesXml", "特征描述", "<Features/>\n", true},
    };
}

BuiltInDevice makeCodeReader(int instance)
{
    const CodeReaderIdentity identity = identityOf(instance, kModel);
    return built(codeReaderTable(identity), identity);
}

BuiltInDevice makeCodeReaderOfProduct(int instance, qint64 productType)
{
    CodeReaderIdentity identity = identityOf(instance, kModel);
    identity.m_nProductType = productType;
    return built(codeReaderTable(identity), identity);
}

BuiltInDevice makeCodeReaderWithoutTuning(int instance)
{
    const CodeReaderIdentity identity = identityOf(instance, kModel);
    FeatureTable table = codeReaderTable(identity);
    for (const char *name : {"SmartTune", "SmartTuneStop", "SmartTuneProgress"}) {
        table.remove(name);
    }
    return built(table, identity);
}

std::optional<ReaderLight> readerLightOf(const QString &id)
{
    static const QRegularExpression pattern(
        QStringLiteral("^code-reader-light([346])(-all)?(-bitmap)?(-commands)?(-stray)?$"));
    const QRegularExpressionMatch match = pattern.match(id);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const auto has = [&match](int part) { return !match.captured(part).isEmpty(); };
    return ReaderLight{match.captured(1).toInt(), has(2), has(3), has(4), has(5)};
}

BuiltInDevice makeCodeReaderWithLight(const ReaderLight &light, int instance)
{
    CodeReaderIdentity identity = identityOf(instance, kModel);
    identity.m_light = light;
    return built(codeReaderTable(identity), identity);
}

BuiltInDevice makeOlderCodeReader(int instance)
{
    static const struct
    {
        const char *name;
        const char *olderName;
    } kNames[] = {
        {"StrobeLineExposeDelay", "Strobe2Delay"},
        {"StrobeLineExposeDuration", "Strobe2PulseWidth"},
        {"StrobeLinePreDelay", "FlashAheadTime"},
        {"LineDebouncerTime", "Line0Glitch"},
        {"CounterValue", "CountNumber"},
        {"HardwareTriggerActivation", "LineOutHardTriggerActive"},
        {"TcpProtocalEnable", "TcpProtocolEnable"},
        {"BcrNameEnable", "TcpBarcodeNameEnable"},
        {"TcpDstAddr", "TCPDestIp"},
        {"FlashMode", "LightMode"},
        {"PrechargeTime", "FlashAhead"},
        {"TestPattern", "TestImageModel"},
    };
    const CodeReaderIdentity identity = identityOf(instance, kOlderModel);
    FeatureTable table = codeReaderTable(identity);
    for (const auto &row : kNames) {
        table.rename(row.name, row.olderName);
    }
    return built(table, identity);
}
