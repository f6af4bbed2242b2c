#include "host/simulator/codereader/Protocols.h"

#include <algorithm>

const QVector<ProtocolRow> &readerProtocols()
{
    static const QVector<ProtocolRow> kRows = {
        {"Tcp", "TCP client", "TCP客户端", "TcpSelected", "(P = 2) || (P = 5)"},
        {"Serial", "serial port", "串口", "SerialSelected", "P = 3"},
        {"Ftp", "FTP", "FTP", "FtpSelected", "P = 4"},
        {"TcpServer", "TCP server", "TCP服务器", "TcpServerSelected", "P = 6"},
        {"Profinet", "Profinet", "Profinet", "ProfinetSelected", "P = 7"},
        {"Melsec", "MELSEC", "MELSEC", "MelsecSelected", "P = 8"},
        {"EthernetIp", "EtherNet/IP", "EtherNet/IP", "EthernetIpSelected", "P = 9"},
        {"ModBus", "ModBus", "ModBus", "ModBusSelected", "P = 10"},
        {"Udp", "UDP", "UDP", "UdpSelected", "P = 11"},
        {"Fins", "FINS", "FINS", "FinsSelected", "P = 12"},
        {"Usb", "USB", "USB", "UsbSelected", "P = 13"},
        {"Slmp", "SLMP", "SLMP", "SlmpSelected", "P = 14"},
        {"Hid", "keyboard", "键盘", "HidSelected", "P = 15"},
        {"RF24", "2.4 GHz radio", "2.4G无线", "RF24Selected", "P = 16"},
        {"BaseOrReceiver", "base station", "基座", "BaseOrReceiverSelected", "P = 17"},
    };
    return kRows;
}

const ProtocolRow &readerProtocol(const QByteArray &prefix)
{
    const QVector<ProtocolRow> &rows = readerProtocols();
    const auto found = std::find_if(rows.cbegin(), rows.cend(), [&prefix](const ProtocolRow &row) {
        return prefix == row.m_strPrefix;
    });
    if (found == rows.cend()) {
        qFatal("the code reader has no protocol %s", prefix.constData());
    }
    return *found;
}
