#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

// Addresses below 0x1000 are those of the bootstrap registers of GigE Vision.

namespace {

void addDeviceMode(FeatureTable &t, const NetworkIdentity &identity)
{
    t.structRegister("GevVersionWord", Int(4, 0).readOnly().at(0));
    t.structEntry("GevVersionWord", "GevVersionMajorEntry", 16, 16, 2);
    t.structEntry("GevVersionWord", "GevVersionMinorEntry", 0, 16, 0);
    t.integer("GevVersionMajor",
              {"Major version of the GigE Vision standard that the device follows.",
               "GigE Vision主版本", "设备所遵循的GigE Vision标准的主版本号。"})
        .from("GevVersionMajorEntry")
        .range("0", "65535", "1")
        .expert();
    t.integer("GevVersionMinor",
              {"Minor version of the GigE Vision standard that the device follows.",
               "GigE Vision次版本", "设备所遵循的GigE Vision标准的次版本号。"})
        .from("GevVersionMinorEntry")
        .range("0", "65535", "1")
        .expert();
    t.boolean("GevDeviceModeIsBigEndian",
              {"Tells whether the bootstrap registers are big-endian.", "大端模式",
               "指示引导寄存器是否为大端字节序。"})
        .in(Bits("GevDeviceModeWord", 31, 1, 1).at(0x4).readOnly())
        .guru();
    t.enumeration("GevDeviceModeCharacterSet",
                  {"Character set that the strings of the bootstrap registers use.", "字符集",
                   "引导寄存器中字符串所用的字符集。"})
        .entry("UTF8", 1, "UTF8")
        .entry("ASCII", 2, "ASCII")
        .guru()
        .in(Bits("GevDeviceModeWord", 0, 8, 1).at(0x4).readOnly());
    t.integer("GevMACAddress",
              {"MAC address of the network interface.", "MAC地址", "网络接口的MAC地址。"})
        .in(Int(8, qint64(identity.m_nMac)).at(0x8).readOnly())
        .shownAs("MACAddress");
    t.integer("GevNumberOfInterfaces",
              {"Number of network interfaces that the device has.", "网络接口数量",
               "设备具有的网络接口数量。"})
        .in(Int(4, 1).at(0x600).readOnly())
        .expert();
    t.enumeration("GevSupportedOptionSelector",
                  {"Selects the option of GigE Vision to ask for.", "GEV选项选择",
                   "选择要查询的GigE Vision选项。"})
        .entry("UserDefinedName", 0, "用户自定义名称")
        .entry("SerialNumber", 1, "序列号")
        .entry("HeartbeatDisable", 2, "停用心跳")
        .entry("PacketResend", 3, "包重传")
        .expert()
        .in(Int(4, 0).transient());
    t.registerNode("GevCapabilityWord", Int(4, 0x0000000B).readOnly());
    t.intSwissKnife("GevSupportedOptionFormula", "(ALL >> SEL) & 1",
                    {{"ALL", "GevCapabilityWord"}, {"SEL", "GevSupportedOptionSelectorReg"}});
    t.boolean("GevSupportedOption",
              {"Returns whether the selected option of GigE Vision is supported.", "GEV选项支持",
               "返回设备是否支持所选的GigE Vision选项。"})
        .from("GevSupportedOptionFormula")
        .expert()
        .selectedBy("GevSupportedOptionSelector");
    t.string("GevFirstURL",
             {"First location from which the description of the device can be loaded.",
              "第一描述地址", "可加载设备描述文件的第一个地址。"},
             Text(512, "Local:" + identity.m_strModel + ".xml;30000;8000").at(0x200).readOnly())
        .guru();
    t.string("GevSecondURL",
             {"Second location from which the description of the device can be loaded.",
              "第二描述地址", "可加载设备描述文件的第二个地址。"},
             Text(512, {}).at(0x400).readOnly())
        .guru();
}

void addAddresses(FeatureTable &t, const NetworkIdentity &identity)
{
    t.boolean(
         "GevCurrentIPConfigurationLLA",
         {"Controls whether the link local address scheme is used. GigE Vision always has it on.",
          "链路本地地址", "控制是否使用链路本地地址方式，GigE Vision中始终开启。"})
        .in(Bits("GevIPConfigurationWord", 2, 1, 1).at(0x14).readOnly());
    t.boolean("GevCurrentIPConfigurationDHCP",
              {"Controls whether the DHCP address scheme is used.", "DHCP",
               "控制是否使用DHCP方式获取地址。"})
        .in(Bits("GevIPConfigurationWord", 1, 1, 1).at(0x14).transient());
    t.boolean("GevCurrentIPConfigurationPersistentIP",
              {"Controls whether the persistent address scheme is used.", "静态IP",
               "控制是否使用静态IP地址。"})
        .in(Bits("GevIPConfigurationWord", 0, 1, 0).at(0x14).transient());
    t.integer(
         "GevCurrentIPAddress",
         {"Current IP address of the network interface.", "当前IP地址", "网络接口的当前IP地址。"})
        .in(Int(4, identity.m_nIpv4).at(0x24).readOnly())
        .shownAs("IPV4Address");
    t.integer("GevCurrentSubnetMask",
              {"Current subnet mask of the network interface.", "当前子网掩码",
               "网络接口的当前子网掩码。"})
        .in(Int(4, 0xFFFFFF00).at(0x34).readOnly())
        .shownAs("IPV4Address");
    t.integer("GevCurrentDefaultGateway",
              {"Current default gateway of the network interface.", "当前默认网关",
               "网络接口的当前默认网关。"})
        .in(Int(4, 0xC0A80A01).at(0x44).readOnly())
        .shownAs("IPV4Address");
    t.integer("GevPersistentIPAddress",
              {"Persistent IP address of the network interface.", "静态IP地址",
               "网络接口的静态IP地址。"})
        .in(Int(4, identity.m_nIpv4).at(0x64C).transient())
        .range("0", "4294967295")
        .shownAs("IPV4Address");
    t.integer("GevPersistentSubnetMask",
              {"Persistent subnet mask that belongs to the persistent IP address.", "静态子网掩码",
               "与静态IP地址对应的子网掩码。"})
        .in(Int(4, 0xFFFFFF00).at(0x65C).transient())
        .range("0", "4294967295")
        .shownAs("IPV4Address");
    t.integer("GevPersistentDefaultGateway",
              {"Persistent default gateway of the network interface.", "静态默认网关",
               "网络接口的静态默认网关。"})
        .in(Int(4, 0xC0A80A01).at(0x66C).transient())
        .range("0", "4294967295")
        .shownAs("IPV4Address");
    t.integer("GevLinkSpeed",
              {"Speed of the link in megabits per second.", "网络连接速率",
               "网络连接的速率，单位为兆比特每秒。"})
        .in(Int(4, 1000).at(0x670).readOnly())
        .unit("Mbps")
        .expert();
}

void addControl(FeatureTable &t)
{
    t.integer("GevMessageChannelCount",
              {"Number of message channels that the device supports.", "消息通道数量",
               "设备支持的消息通道数量。"})
        .in(Int(4, 1).at(0x900).readOnly())
        .expert();
    t.integer("GevStreamChannelCount",
              {"Number of stream channels that the device supports.", "GEV流通道数量",
               "设备支持的GEV流通道数量。"})
        .in(Int(4, 1).at(0x904).readOnly())
        .expert();
    t.integer("GevHeartbeatTimeout",
              {"Time in which the host has to access the device to keep control of it.", "心跳超时",
               "主机为保持控制权须访问设备的时间间隔。"})
        .in(Int(4, 3000).at(0x938).transient())
        .range("500", "600000", "1")
        .unit("ms")
        .guru();
    t.integer("GevTimestampTickFrequency",
              {"Number of timestamp ticks in a second.", "时间戳频率", "时间戳每秒的计数值。"})
        .in(Int(8, 1000000000).at(0x93C).readOnly())
        .unit("Hz")
        .expert();
    t.command("GevTimestampControlLatch",
              {"Latches the timestamp counter into GevTimestampValue.", "GEV时间戳锁存",
               "将时间戳计数器的当前值锁存到GEV时间戳。"})
        .expert()
        .runs(Int(4, 0).at(0x944).writeOnly(), "2");
    t.command("GevTimestampControlReset",
              {"Resets the timestamp counter of GigE Vision.", "GEV时间戳复位",
               "将GEV时间戳计数器清零。"})
        .expert()
        .from("GevTimestampControlLatchReg")
        .property("CommandValue", "1");
    t.integer("GevTimestampValue",
              {"Latched value of the timestamp counter.", "GEV时间戳", "GEV时间戳计数器的锁存值。"})
        .in(Int(8, 0).at(0x948).readOnly().moving())
        .shownAs("PureNumber")
        .expert();
    t.enumeration("GevCCP",
                  {"Controls the control privilege of an application.", "控制权限",
                   "控制应用程序对设备的控制权限。"})
        .entry("OpenAccess", 0, "开放访问")
        .entry("ExclusiveAccess", 1, "独占访问")
        .entry("ControlAccess", 2, "控制访问")
        .guru()
        .in(Int(4, 2).at(0xA00).transient());
    t.integer(
         "GevMCPHostPort",
         {"Port of the host to which messages are sent.", "消息主机端口", "接收消息的主机端口。"})
        .in(Bits("GevMCPWord", 0, 16, 0).at(0xB00).transient())
        .range("0", "65535", "1")
        .guru();
    t.integer(
         "GevMCDA",
         {"Destination address of the message channel.", "消息目的地址", "消息通道的目的IP地址。"})
        .in(Int(4, 0).at(0xB10).transient())
        .range("0", "4294967295")
        .shownAs("IPV4Address")
        .guru();
    t.directRegister("GevMCTT",
                     {"Transmission time-out of the message channel in milliseconds.",
                      "消息传输超时", "消息通道的传输超时时间，单位为毫秒。"},
                     Int(4, 300).at(0xB14).transient())
        .unit("ms")
        .guru();
    t.directRegister("GevMCRC",
                     {"Number of retransmissions when a message times out.", "消息重传次数",
                      "消息超时时允许的重传次数。"},
                     Int(4, 3).at(0xB18).transient())
        .guru();
}

void addStream(FeatureTable &t)
{
    t.integer("GevStreamChannelSelector",
              {"Selects the stream channel of GigE Vision to control.", "GEV流通道选择",
               "选择要控制的GEV流通道。"})
        .in(Int(4, 0).transient())
        .range("0", "0", "1")
        .expert();
    t.integer("GevSCPHostPort",
              {"Port of the host to which the selected channel sends its stream.", "流主机端口",
               "所选流通道发送数据的主机端口。"})
        .in(Bits("GevSCPWord", 0, 16, 0).at(0xD00).transient())
        .range("0", "65535", "1")
        .guru()
        .selectedBy("GevStreamChannelSelector");
    t.boolean("GevSCPSFireTestPacket",
              {"Sends a test packet when it is set. It clears itself.", "发送测试包",
               "置位时发送一个测试包，随后自动清除。"})
        .in(Bits("GevSCPSWord", 31, 1, 0).at(0xD04).transient())
        .guru()
        .locked()
        .selectedBy("GevStreamChannelSelector");
    t.boolean("GevSCPSDoNotFragment",
              {"Sets the don't fragment bit of the packets of the stream.", "禁止分片",
               "设置流数据包的禁止分片标志。"})
        .in(Bits("GevSCPSWord", 30, 1, 1).at(0xD04).transient())
        .guru()
        .selectedBy("GevStreamChannelSelector");
    t.integer("GevSCPSPacketSize",
              {"Size of the packets of the stream, with all their headers.", "GEV包大小",
               "流数据包的大小，包含全部包头。"})
        .in(Bits("GevSCPSWord", 0, 16, 1500).at(0xD04).transient())
        .range("576", "9000", "4")
        .unit("B")
        .expert()
        .locked()
        .selectedBy("GevStreamChannelSelector");
    t.integer("GevSCPD",
              {"Delay between two packets of the stream, in ticks of the timestamp.", "包间隔",
               "流数据包之间的延迟，以时间戳计数为单位。"})
        .in(Int(4, 1000).at(0xD08).transient())
        .range("0", "100000", "1")
        .shownAs("Logarithmic")
        .expert()
        .selectedBy("GevStreamChannelSelector");
    t.integer("GevSCDA",
              {"Destination address of the selected stream channel.", "流目的地址",
               "所选流通道的目的IP地址。"})
        .in(Int(4, 0xC0A80A02).at(0xD18).transient())
        .range("0", "4294967295")
        .shownAs("IPV4Address")
        .guru()
        .locked()
        .selectedBy("GevStreamChannelSelector");
    t.integer("GevSCSP",
              {"Source port of the selected stream channel.", "流源端口", "所选流通道的源端口。"})
        .in(Bits("GevSCSPWord", 0, 16, 50100).at(0xD1C).readOnly())
        .guru()
        .selectedBy("GevStreamChannelSelector");
}

} // namespace

void addGigEVisionRows(FeatureTable &table, const NetworkIdentity &identity)
{
    table.category("GigEVision",
                   {"Features of the GigE Vision transport layer.", "GigE Vision",
                    "GigE Vision传输层的特征。"},
                   0x1A400, "TransportLayerControl");
    addDeviceMode(table, identity);
    addAddresses(table, identity);
    addControl(table);
    addStream(table);
}
