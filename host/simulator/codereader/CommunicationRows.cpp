#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/codereader/Protocols.h"
#include "host/simulator/description/PlainRows.h"

namespace {

constexpr quint32 kHostAddress = 0xC0A80A02; // 192.168.10.2

void addProtocols(FeatureTable &t)
{
    const QVector<ChoiceRow> choices = {
        {"CommunicationProtocols",
         {"Protocol by which results are sent.", "通信协议", "发送结果所用的通信协议。"},
         {{"Host", 1, "主机"},
          {"TcpClient", 2, "TCP客户端"},
          {"SerialPort", 3, "串口"},
          {"Ftp", 4, "FTP传输"},
          {"TcpClientHeld", 5, "TCP长连接"},
          {"TcpServer", 6, "TCP服务器"},
          {"Profinet", 7, "Profinet协议"},
          {"Melsec", 8, "MELSEC协议"},
          {"EthernetIp", 9, "EtherNet/IP协议"},
          {"ModBus", 10, "ModBus协议"},
          {"Udp", 11, "UDP协议"},
          {"Fins", 12, "FINS协议"},
          {"Usb", 13, "USB接口"},
          {"Slmp", 14, "SLMP协议"},
          {"Keyboard", 15, "键盘"},
          {"Radio", 16, "2.4G无线"},
          {"BaseStation", 17, "基座"}},
         2,
         RowOptions().invalidatedBy("RunningMode")},
        {"SerialStopBit",
         {"Number of stop bits of the serial port.", "串口停止位", "串口的停止位数。"},
         {{"One", 1, "1位"}, {"Two", 2, "2位"}},
         1,
         RowOptions().available("SerialSelected")},
    };
    addRows(t, choices);
    for (const ProtocolRow &row : readerProtocols()) {
        t.intSwissKnife(row.m_strAvailable, row.m_strSelected,
                        {{"P", "CommunicationProtocolsReg"}});
    }
    const QVector<SwitchRow> switches = {
        {"TcpProtocalEnable",
         {"Sends results as TCP client.", "TCP使能", "以TCP客户端方式发送结果。"},
         1},
        {"SerialProtocalEnable",
         {"Sends results over the serial port.", "串口使能", "通过串口发送结果。"},
         0},
        {"FtpProtocalEnable",
         {"Uploads results and images by FTP.", "FTP使能", "通过FTP上传结果与图像。"},
         0},
        {"ProfinetEnable",
         {"Takes part in a Profinet network. The address is then set by its controller.",
          "Profinet使能", "接入Profinet网络，地址由其控制器设置。"},
         0},
        {"HttpEnable",
         {"Serves the pages of the device by HTTP.", "HTTP使能", "通过HTTP提供设备网页。"},
         1,
         RowOptions().expert()},
        {"OutputRetransEnable",
         {"Sends a result again when it was not acknowledged.", "重传使能",
          "结果未被确认时重新发送。"},
         0},
    };
    addRows(t, switches);
    t.intSwissKnife("RetransOn", "ENABLE <> 0", {{"ENABLE", "OutputRetransEnableReg"}});
}

void addPorts(FeatureTable &t)
{
    t.category("PortControl",
               {"Ports and addresses of the network. No two services may have one port.",
                "端口设置", "网络端口与地址，各服务的端口不得相同。"},
               0x30800, "CommunicationControl");
    const QVector<NumberRow> numbers = {
        {"TcpDstAddr",
         {"Address of the host that the TCP client connects to.", "TCP目的地址",
          "TCP客户端所连接主机的地址。"},
         kHostAddress,
         "0",
         "4294967295",
         "",
         RowOptions().shownAs("IPV4Address")},
        {"TCPDestPort",
         {"Port of the host that the TCP client connects to.", "TCP目的端口",
          "TCP客户端所连接主机的端口。"},
         2001,
         "1",
         "65535",
         ""},
        {"FtpHostPort",
         {"Port of the FTP server.", "FTP主机端口", "FTP服务器的端口。"},
         21,
         "1",
         "65535",
         ""},
        {"TcpServerPort",
         {"Port of the TCP server of the device.", "TCP服务器端口", "设备TCP服务器的端口。"},
         2002,
         "1",
         "65535",
         ""},
        {"MelsecServerPort",
         {"Port of the MELSEC service.", "MELSEC端口", "MELSEC服务的端口。"},
         5007,
         "1",
         "65535",
         ""},
        {"ModBusServerPort",
         {"Port of the ModBus service.", "ModBus端口", "ModBus服务的端口。"},
         502,
         "1",
         "65535",
         ""},
        {"UdpDestPort",
         {"Port of the host that UDP results are sent to.", "UDP目的端口",
          "接收UDP结果的主机端口。"},
         2003,
         "1",
         "65535",
         ""},
        {"TcpUpgPort",
         {"Port of the service that updates the firmware.", "升级端口", "固件升级服务的端口。"},
         7500,
         "1",
         "65535",
         "",
         RowOptions().expert()},
        {"OutputRetransNumber",
         {"Number of times that a result is sent again.", "重传次数", "结果重新发送的次数。"},
         3,
         "1",
         "10",
         "",
         RowOptions().available("RetransOn")},
    };
    addRows(t, numbers);
}

void addFtp(FeatureTable &t)
{
    t.category("FtpControl", {"Features of the upload by FTP.", "FTP设置", "通过FTP上传的特征。"},
               0x31000, "CommunicationControl");
    const QVector<StringRow> strings = {
        {"FtpUserName",
         {"Name of the user on the FTP server.", "FTP用户名", "FTP服务器的用户名。"},
         64,
         "reader"},
        {"FtpUserPasswd",
         {"Password of the user on the FTP server.", "FTP密码", "FTP服务器的用户密码。"},
         64,
         ""},
        {"FtpConnectionSymbol",
         {"Text between the parts of a file's name.", "FTP连接符", "文件名各部分之间的连接文字。"},
         8,
         "_"},
    };
    addRows(t, strings);
    const QVector<ChoiceRow> choices = {
        {"FtpTransmissionConditions",
         {"When something is uploaded.", "FTP传输条件", "何时进行上传。"},
         {{"Always", 0, "始终"}, {"ReadingOk", 1, "读码成功"}, {"ReadingFailed", 2, "读码失败"}},
         0},
        {"FtpTransmissionResultType",
         {"What is uploaded.", "FTP传输内容", "上传的内容。"},
         {{"Result", 0, "结果"}, {"Picture", 1, "图像"}, {"Both", 2, "两者"}},
         2},
        {"FtpTransFileFormat",
         {"Format of the pictures that are uploaded.", "FTP图像格式", "上传图像的格式。"},
         {{"Jpeg", 0, "压缩"}, {"Bitmap", 1, "位图"}},
         0},
    };
    addRows(t, choices);
    const QVector<SwitchRow> switches = {
        {"FtpPackageNumber",
         {"Puts the number of the package into a file's name.", "FTP包序号",
          "在文件名中加入包序号。"},
         1},
        {"FtpBarcodeNumber",
         {"Puts the number of codes into a file's name.", "FTP条码数", "在文件名中加入条码数。"},
         0},
    };
    addRows(t, switches);
}

} // namespace

void addReaderCommunicationRows(FeatureTable &table)
{
    table.category("CommunicationControl",
                   {"Features of the communication with other systems.", "通信控制",
                    "控制与其他系统通信的特征。"},
                   0x30000);
    addProtocols(table);
    addPorts(table);
    addFtp(table);
}
