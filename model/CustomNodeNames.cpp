#include "model/CustomNodeNames.h"

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
