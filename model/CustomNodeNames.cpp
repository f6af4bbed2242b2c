#include "model/CustomNodeNames.h"

#include <QHash>
#include <QSet>

QString customNodeOf(const QString &strFormatNode)
{
    static const QSet<QString> formatNodes{
        QStringLiteral("TcpFormatString"),          QStringLiteral("SerialFormatString"),
        QStringLiteral("TcpServerFormatString"),    QStringLiteral("MelsecFormatString"),
        QStringLiteral("ProfinetFormatString"),     QStringLiteral("EthernetIpFormatString"),
        QStringLiteral("ModBusFormatString"),       QStringLiteral("FinsFormatString"),
        QStringLiteral("ResSet_Emmc_Picture_Name"), QStringLiteral("ResSet_Ftp_Picture_Name"),
        QStringLiteral("FtpFormatDirectoryString"), QStringLiteral("FtpFormatResultString"),
        QStringLiteral("UdpFormatString"),          QStringLiteral("UsbFormatString"),
        QStringLiteral("SlmpFormatString"),         QStringLiteral("UdpStartTriggerHex"),
        QStringLiteral("UdpEndTriggerHex"),         QStringLiteral("TcpStartTriggerHex"),
        QStringLiteral("TcpEndTriggerHex"),         QStringLiteral("TcpClientStartTriggerHex"),
        QStringLiteral("TcpClientEndTriggerHex"),   QStringLiteral("SerialStartTriggerHex"),
        QStringLiteral("SerialEndTriggerHex"),      QStringLiteral("HidFormatString"),
        QStringLiteral("RF24FormatString"),         QStringLiteral("BaseOrReceiverFormatString"),
    };
    return formatNodes.contains(strFormatNode) ? QStringLiteral("Custom_") + strFormatNode
                                               : QString();
}

QString sourceDataNodeOf(const QString &strFormatNode)
{
    static const QHash<QString, QString> sources{
        {QStringLiteral("TcpFormatString"), QStringLiteral("TcpFormatSourceData")},
        {QStringLiteral("SerialFormatString"), QStringLiteral("SerialFormatSourceData")},
        {QStringLiteral("TcpServerFormatString"), QStringLiteral("TcpServerFormatSourceData")},
        {QStringLiteral("MelsecFormatString"), QStringLiteral("MelsecFormatSourceData")},
        {QStringLiteral("ProfinetFormatString"), QStringLiteral("ProfinetFormatSourceData")},
        {QStringLiteral("EthernetIpFormatString"), QStringLiteral("EthernetIpFormatSourceData")},
        {QStringLiteral("ModBusFormatString"), QStringLiteral("ModBusFormatSourceData")},
        {QStringLiteral("FinsFormatString"), QStringLiteral("FinsFormatSourceData")},
        {QStringLiteral("ResSet_Emmc_Picture_Name"),
         QStringLiteral("ResSet_Emmc_FileName_SourceData")},
        {QStringLiteral("ResSet_Ftp_Picture_Name"),
         QStringLiteral("ResSet_Ftp_FileName_SourceData")},
        {QStringLiteral("FtpFormatDirectoryString"), QStringLiteral("FTPFormatDirectorySettings")},
        {QStringLiteral("FtpFormatResultString"), QStringLiteral("FTPFormatResultSetting")},
        {QStringLiteral("UdpFormatString"), QStringLiteral("UdpFormatSourceData")},
        {QStringLiteral("UsbFormatString"), QStringLiteral("UsbFormatSourceData")},
        {QStringLiteral("SlmpFormatString"), QStringLiteral("SlmpFormatSourceData")},
        {QStringLiteral("HidFormatString"), QStringLiteral("HidFormatSourceData")},
        {QStringLiteral("BaseOrReceiverFormatString"),
         QStringLiteral("BaseOrReceiverFormatSourceData")},
        {QStringLiteral("RF24FormatString"), QStringLiteral("RF24FormatSourceData")},
    };
    return sources.value(strFormatNode);
}
