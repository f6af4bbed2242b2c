#include "model/CustomNodeNames.h"

#include <algorithm>
#include <iterator>

namespace {

/// A node whose text is put together from tags, or that holds the text of a trigger.
struct FormatRow
{
    QLatin1String node;
    QLatin1String sourceData; ///< the enumeration of its tags; empty for a trigger
};

const FormatRow ROWS[] = {
    {QLatin1String("TcpFormatString"), QLatin1String("TcpFormatSourceData")},
    {QLatin1String("SerialFormatString"), QLatin1String("SerialFormatSourceData")},
    {QLatin1String("TcpServerFormatString"), QLatin1String("TcpServerFormatSourceData")},
    {QLatin1String("MelsecFormatString"), QLatin1String("MelsecFormatSourceData")},
    {QLatin1String("ProfinetFormatString"), QLatin1String("ProfinetFormatSourceData")},
    {QLatin1String("EthernetIpFormatString"), QLatin1String("EthernetIpFormatSourceData")},
    {QLatin1String("ModBusFormatString"), QLatin1String("ModBusFormatSourceData")},
    {QLatin1String("FinsFormatString"), QLatin1String("FinsFormatSourceData")},
    {QLatin1String("ResSet_Emmc_Picture_Name"), QLatin1String("ResSet_Emmc_FileName_SourceData")},
    {QLatin1String("ResSet_Ftp_Picture_Name"), QLatin1String("ResSet_Ftp_FileName_SourceData")},
    {QLatin1String("FtpFormatDirectoryString"), QLatin1String("FTPFormatDirectorySettings")},
    {QLatin1String("FtpFormatResultString"), QLatin1String("FTPFormatResultSetting")},
    {QLatin1String("UdpFormatString"), QLatin1String("UdpFormatSourceData")},
    {QLatin1String("UsbFormatString"), QLatin1String("UsbFormatSourceData")},
    {QLatin1String("SlmpFormatString"), QLatin1String("SlmpFormatSourceData")},
    {QLatin1String("HidFormatString"), QLatin1String("HidFormatSourceData")},
    {QLatin1String("BaseOrReceiverFormatString"), QLatin1String("BaseOrReceiverFormatSourceData")},
    {QLatin1String("RF24FormatString"), QLatin1String("RF24FormatSourceData")},
    {QLatin1String("UdpStartTriggerHex"), {}},
    {QLatin1String("UdpEndTriggerHex"), {}},
    {QLatin1String("TcpStartTriggerHex"), {}},
    {QLatin1String("TcpEndTriggerHex"), {}},
    {QLatin1String("TcpClientStartTriggerHex"), {}},
    {QLatin1String("TcpClientEndTriggerHex"), {}},
    {QLatin1String("SerialStartTriggerHex"), {}},
    {QLatin1String("SerialEndTriggerHex"), {}},
};

const FormatRow *rowOf(const QString &strFormatNode)
{
    const auto row = std::find_if(std::begin(ROWS), std::end(ROWS), [&](const FormatRow &format) {
        return strFormatNode == format.node;
    });
    return row == std::end(ROWS) ? nullptr : &*row;
}

} // namespace

QString customNodeOf(const QString &strFormatNode)
{
    return rowOf(strFormatNode) ? QStringLiteral("Custom_") + strFormatNode : QString();
}

QString sourceDataNodeOf(const QString &strFormatNode)
{
    const FormatRow *const pRow = rowOf(strFormatNode);
    return pRow ? QString(pRow->sourceData) : QString();
}
