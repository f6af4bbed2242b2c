#include "model/PortableNodeNames.h"

#include <QHash>

namespace {

struct PortableRow
{
    const char *portable;
    const char *older; ///< on "QX"
    const char *newer; ///< on "QH", "QG" and "QV"
};

const PortableRow ROWS[] = {
    {"Node_LineOutDelay", "Strobe2Delay", "StrobeLineExposeDelay"},
    {"Node_LineOutDuration", "Strobe2PulseWidth", "StrobeLineExposeDuration"},
    {"Node_LineOutAhead", "FlashAheadTime", "StrobeLinePreDelay"},
    {"Node_LineDebouncerTime", "Line0Glitch", "LineDebouncerTime"},
    {"Node_CountNumber", "CountNumber", "CounterValue"},
    {"Node_CountSource", "CountSource", "CountSource"},
    {"Node_HardTriggerSource", "HardTriggerSource", "HardTriggerSource"},
    {"Node_HardwareTriggerActivation", "LineOutHardTriggerActive", "HardwareTriggerActivation"},
    {"Node_LineTriggerSoftware", "LineTriggerSoftware", "LineTriggerSoftware"},
    {"Node_NumeralFilter", "NumeralFilter", "NumeralFilter"},
    {"Node_TriggerEndTimeout", "TriggerEndTimeout", "TriggerEndTimeout"},
    {"Node_CommunicationProtocols", "CommunicationProtocols", "CommunicationProtocols"},
    {"Node_JpgEnable", "JpgEnable", "JpgEnable"},
    {"Node_TcpProtocolEnable", "TcpProtocolEnable", "TcpProtocalEnable"},
    {"Node_TcpDstAddr", "TCPDestIp", "TcpDstAddr"},
    {"Node_TCPDestPort", "TCPDestPort", "TCPDestPort"},
    {"Node_SerialProtocalEnable", "SerialProtocalEnable", "SerialProtocalEnable"},
    {"Node_SerialStopBit", "SerialStopBit", "SerialStopBit"},
    {"Node_FtpProtocalEnable", "FtpProtocalEnable", "FtpProtocalEnable"},
    {"Node_CodeNum", "LocBarNum", "LocBarNum"},
    {"Node_NoReadImgIndex", "NoReadImgIndex", "NoReadImgIndex"},
    {"Node_TcpBarcodeNameEnable", "TcpBarcodeNameEnable", "BcrNameEnable"},
    {"Node_TcpBarcodePositionEnable", "TcpBarcodePositionEnable", "TcpBarcodePositionEnable"},
    {"Node_TcpBarcodeAngleEnable", "TcpBarcodeAngleEnable", "TcpBarcodeAngleEnable"},
    {"Node_TcpBarcodeMainPackageIDEnable", "TcpBarcodeMainPackageIDEnable",
     "TcpBarcodeMainPackageIDEnable"},
    {"Node_TcpOutputNoRead", "TcpOutputNoRead", "TcpOutputNoRead"},
    {"Node_TcpstrNoReadText", "TcpstrNoReadText", "TcpstrNoReadText"},
    {"Node_TcpStartText", "TcpStartText", "TcpStartText"},
    {"Node_TcpStopText", "TcpStopText", "TcpStopText"},
    {"Node_TcpStopCR", "TcpStopCR", "TcpStopCR"},
    {"Node_TcpStopLF", "TcpStopLF", "TcpStopLF"},
    {"Node_TcpStopCRLF", "TcpStopCRLF", "TcpStopCRLF"},
    {"Node_TcpDelimiter", "TcpDelimiter", "TcpDelimiter"},
    {"Node_TcpServerBarcodeNameEnable", "TcpServerBarcodeNameEnable", "TcpServerBarcodeNameEnable"},
    {"Node_TcpServerBarcodePositionEnable", "TcpServerBarcodePositionEnable",
     "TcpServerBarcodePositionEnable"},
    {"Node_TcpServerBarcodeAngleEnable", "TcpServerBarcodeAngleEnable",
     "TcpServerBarcodeAngleEnable"},
    {"Node_TcpServerBarcodeMainPackageIDEnable", "TcpServerBarcodeMainPackageIDEnable",
     "TcpServerBarcodeMainPackageIDEnable"},
    {"Node_TcpServerOutputNoRead", "TcpServerOutputNoRead", "TcpServerOutputNoRead"},
    {"Node_TcpServerstrNoReadText", "TcpServerstrNoReadText", "TcpServerstrNoReadText"},
    {"Node_TcpServerStartText", "TcpServerStartText", "TcpServerStartText"},
    {"Node_TcpServerStopText", "TcpServerStopText", "TcpServerStopText"},
    {"Node_TcpServerStopCR", "TcpServerStopCR", "TcpServerStopCR"},
    {"Node_TcpServerStopLF", "TcpServerStopLF", "TcpServerStopLF"},
    {"Node_TcpServerStopCRLF", "TcpServerStopCRLF", "TcpServerStopCRLF"},
    {"Node_TcpServerDelimiter", "TcpServerDelimiter", "TcpServerDelimiter"},
    {"Node_SerialBarcodeNameEnable", "SerialBarcodeNameEnable", "SerialBarcodeNameEnable"},
    {"Node_SerialBarcodePositionEnable", "SerialBarcodePositionEnable",
     "SerialBarcodePositionEnable"},
    {"Node_SerialBarcodeAngleEnable", "SerialBarcodeAngleEnable", "SerialBarcodeAngleEnable"},
    {"Node_SerialBarcodeMainPackageIDEnable", "SerialBarcodeMainPackageIDEnable",
     "SerialBarcodeMainPackageIDEnable"},
    {"Node_SerialOutputNoRead", "SerialOutputNoRead", "SerialOutputNoRead"},
    {"Node_SerialstrNoReadText", "SerialstrNoReadText", "SerialstrNoReadText"},
    {"Node_SerialStartText", "SerialStartText", "SerialStartText"},
    {"Node_SerialStopText", "SerialStopText", "SerialStopText"},
    {"Node_SerialStopCR", "SerialStopCR", "SerialStopCR"},
    {"Node_SerialStopLF", "SerialStopLF", "SerialStopLF"},
    {"Node_SerialStopCRLF", "SerialStopCRLF", "SerialStopCRLF"},
    {"Node_SerialDelimiter", "SerialDelimiter", "SerialDelimiter"},
    {"Node_FtpTransmissionConditions", "FtpTransmissionConditions", "FtpTransmissionConditions"},
    {"Node_FtpTransmissionResultType", "FtpTransmissionResultType", "FtpTransmissionResultType"},
    {"Node_FtpTransFileFormat", "FtpTransFileFormat", "FtpTransFileFormat"},
    {"Node_FtpConnectionSymbol", "FtpConnectionSymbol", "FtpConnectionSymbol"},
    {"Node_FtpPackageNumber", "FtpPackageNumber", "FtpPackageNumber"},
    {"Node_FtpBarcodeNumber", "FtpBarcodeNumber", "FtpBarcodeNumber"},
    {"Node_OutputRetransEnable", "OutputRetransEnable", "OutputRetransEnable"},
    {"Node_OutputRetransNumber", "OutputRetransNumber", "OutputRetransNumber"},
    {"Node_FlashEnable", "FlashEnable", "FlashEnable"},
    {"Node_FlashMode", "LightMode", "FlashMode"},
    {"Node_FlashTime", "FlashTime", "FlashTime"},
    {"Node_FlashDelay", "FlashDelay", "FlashDelay"},
    {"Node_FlashAhead", "FlashAhead", "PrechargeTime"},
    {"Node_NoReadTimeOut", "NoReadTimeOut", "NoReadTimeOut"},
    {"Node_MirrorX", "ReverseX", "MirrorX"},
    {"Node_TestPattern", "TestImageModel", "TestPattern"},
    {"Node_", "", ""},
};

} // namespace

const QStringList &PortableNodeNames::platformKeys()
{
    static const QStringList keys{QStringLiteral("QX"), QStringLiteral("QH"), QStringLiteral("QG"),
                                  QStringLiteral("QV")};
    return keys;
}

QStringList PortableNodeNames::portableNames()
{
    QStringList names;
    for (const PortableRow &row : ROWS) {
        names.append(QString::fromLatin1(row.portable));
    }
    return names;
}

QString PortableNodeNames::nodeName(const QString &strPlatformKey, const QString &strPortableName)
{
    static const QHash<QString, const PortableRow *> rows = [] {
        QHash<QString, const PortableRow *> byName;
        for (const PortableRow &row : ROWS) {
            byName.insert(QString::fromLatin1(row.portable), &row);
        }
        return byName;
    }();
    const PortableRow *const pRow = rows.value(strPortableName, nullptr);
    if (!pRow || !platformKeys().contains(strPlatformKey)) {
        return QString();
    }
    const bool bOlder = strPlatformKey == platformKeys().constFirst();
    return QString::fromLatin1(bOlder ? pRow->older : pRow->newer);
}
