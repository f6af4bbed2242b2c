#include "host/simulator/areacamera/AreaCamera.h"
#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/CameraBasics.h"

namespace {

void addIdentity(FeatureTable &t, const AreaCameraIdentity &identity)
{
    t.enumeration("DeviceType", {"Returns the device type.", "设备类型", "返回设备的类型。"})
        .entry("Transmitter", 0, "发送端")
        .entry("Receiver", 1, "接收端")
        .entry("Transceiver", 2, "收发端")
        .entry("Peripheral", 3, "外围设备")
        .guru()
        .in(Int(4, 0).readOnly());
    t.enumeration("DeviceScanType",
                  {"Scan type of the sensor of the device.", "扫描类型", "设备传感器的扫描类型。"})
        .entry("Areascan", 0, "面阵")
        .entry("Linescan", 1, "线阵")
        .expert()
        .in(Int(4, 0).readOnly());
    t.string("DeviceVendorName",
             {"Name of the manufacturer of the device.", "厂商名称", "设备制造商的名称。"},
             Text(32, "Simulated Imaging").at(0x48).readOnly());
    t.string("DeviceModelName", {"Model of the device.", "型号名称", "设备的型号。"},
             Text(32, "SIM-A2500").at(0x68).readOnly());
    t.string(
        "DeviceManufacturerInfo",
        {"Manufacturer information about the device.", "厂商信息", "制造商提供的设备附加信息。"},
        Text(48, "Five megapixel monochrome, global shutter").at(0xA8).readOnly());
    t.string("DeviceVersion", {"Version of the device.", "设备版本", "设备的版本。"},
             Text(32, "2.1.0").at(0x88).readOnly());
    t.string("DeviceFirmwareVersion",
             {"Version of the firmware in the device.", "固件版本", "设备中固件的版本。"},
             Text(32, "FW 1.4.7 build 2206").readOnly())
        .expert();
    t.string("DeviceSerialNumber",
             {"Serial number of the device. It is unique among the devices of one manufacturer.",
              "序列号", "设备的序列号，在同一制造商的设备中唯一。"},
             Text(16, identity.m_strSerial).at(0xD8).readOnly())
        .expert();
    t.string("DeviceUserID",
             {"Name that the user gives to the device. It is kept when the device is switched off.",
              "用户自定义名称", "用户为设备设定的名称，断电后保持不变。"},
             Text(16, identity.m_strUserId).at(0xE8).transient())
        .streamable();
    t.structRegister("SfncVersionWord", Int(4, 0).littleEndian().readOnly());
    t.structEntry("SfncVersionWord", "SfncMajorEntry", 16, 8, 2);
    t.structEntry("SfncVersionWord", "SfncMinorEntry", 8, 8, 7);
    t.structEntry("SfncVersionWord", "SfncSubMinorEntry", 0, 8, 0);
    t.integer("DeviceSFNCVersionMajor",
              {"Major version of the feature naming convention that the device follows.",
               "SFNC主版本号", "设备所遵循的标准特征命名规范的主版本号。"})
        .from("SfncMajorEntry")
        .range("0", "255", "1")
        .shownAs("PureNumber")
        .expert();
    t.integer("DeviceSFNCVersionMinor",
              {"Minor version of the feature naming convention that the device follows.",
               "SFNC次版本号", "设备所遵循的标准特征命名规范的次版本号。"})
        .from("SfncMinorEntry")
        .range("0", "255", "1")
        .shownAs("PureNumber")
        .expert();
    t.integer("DeviceSFNCVersionSubMinor",
              {"Sub minor version of the feature naming convention that the device follows.",
               "SFNC子版本号", "设备所遵循的标准特征命名规范的子版本号。"})
        .from("SfncSubMinorEntry")
        .range("0", "255", "1")
        .shownAs("PureNumber")
        .expert();
    t.directRegister("DeviceRegisterMapVersion",
                     {"Version of the layout of the registers, as a raw number.", "寄存器映射版本",
                      "寄存器布局的版本，以原始数值表示。"},
                     Int(4, 0x00020001).readOnly())
        .shownAs("HexNumber")
        .custom()
        .guru();
}

void addService(FeatureTable &t)
{
    t.command("DeviceReset",
              {"Resets the device to its power up state. The connection is lost and the device has "
               "to be found again.",
               "设备复位", "将设备复位到上电状态，连接会断开，需要重新发现设备。"})
        .guru()
        .runs(Trigger());
    t.enumeration("DeviceIndicatorMode",
                  {"Controls the behaviour of the indicators, such as LEDs, on the device.",
                   "指示灯模式", "控制设备上指示灯（如LED）的工作方式。"})
        .entry("Inactive", 0, "关闭")
        .entry("Active", 1, "开启")
        .entry("ErrorStatus", 2, "仅指示错误")
        .expert()
        .in(Bits("DeviceServiceWord", 0, 4, 1));
    t.command("DeviceRegistersStreamingStart",
              {"Prepares the device for registers streaming without checking for consistency.",
               "开始批量写寄存器", "使设备准备好接收批量寄存器写入，期间不检查一致性。"})
        .guru()
        .runs(Trigger());
    t.command("DeviceRegistersStreamingEnd",
              {"Announces the end of registers streaming. The device checks its registers for "
               "consistency.",
               "结束批量写寄存器", "声明批量寄存器写入结束，设备随后检查寄存器的一致性。"})
        .guru()
        .runs(Trigger());
    t.command("DeviceRegistersCheck",
              {"Performs the validation of the current register set for consistency.", "检查寄存器",
               "检查当前寄存器组的一致性。"})
        .expert()
        .runs(Trigger());
    t.boolean("DeviceRegistersValid",
              {"Returns whether the current register set is valid and consistent.", "寄存器有效",
               "返回当前寄存器组是否有效且一致。"})
        .expert()
        .in(Bits("DeviceStateWord", 0, 1, 1).readOnly());
    t.enumeration("DeviceTemperatureSelector",
                  {"Selects the location within the device where the temperature is measured.",
                   "温度测量位置选择", "选择设备内部测量温度的位置。"})
        .entry("Sensor", 0, "传感器")
        .entry("Mainboard", 1, "主板")
        .entry("Housing", 2, "外壳")
        .expert()
        .in(Int(4, 0));
    addTemperatureRows(t, Int(2, 0).values({412, 458, 371}).littleEndian());
    t.registerNode("DeviceSupplyMillivoltsReg", Int(2, 23950).readOnly());
    t.registerNode("DeviceSupplyMilliamperesReg", Int(2, 138).littleEndian().readOnly());
    t.converter("DeviceSupplyVoltageConverter", "FROM * 1000", "TO / 1000.0",
                "DeviceSupplyMillivoltsReg");
    t.floating("DeviceSupplyVoltage",
               {"Supply voltage that the device measures at its input.", "供电电压",
                "设备在输入端测得的供电电压。"})
        .from("DeviceSupplyVoltageConverter")
        .range("0", "65.535")
        .unit("V")
        .readOnly()
        .custom()
        .expert();
    t.swissKnife("DevicePowerFormula", "U * I / 1000000.0",
                 {{"U", "DeviceSupplyMillivoltsReg"}, {"I", "DeviceSupplyMilliamperesReg"}});
    t.floating("DevicePowerConsumption",
               {"Electrical power that the device draws, from its supply voltage and current.",
                "功耗", "由供电电压与电流计算得到的设备功耗。"})
        .from("DevicePowerFormula")
        .range("0", "4300")
        .unit("W")
        .custom()
        .expert();
    t.enumeration("DeviceSerialPortSelector",
                  {"Selects which serial port of the device to control.", "串口选择",
                   "选择要控制的设备串口。"})
        .entry("RS232", 0, "RS232")
        .entry("RS485", 1, "RS485")
        .expert()
        .in(Int(4, 0));
    t.enumeration("DeviceSerialPortBaudRate",
                  {"Speed of the selected serial port of the device.", "串口波特率",
                   "所选设备串口的通信速率。"})
        .entry("Baud9600", 9600, "9600波特")
        .entry("Baud19200", 19200, "19200波特")
        .entry("Baud38400", 38400, "38400波特")
        .entry("Baud115200", 115200, "115200波特")
        .expert()
        .in(Int(4, 9600).values({9600, 115200}).indexedBy("DeviceSerialPortSelector", 2))
        .selectedBy("DeviceSerialPortSelector");
}

void addLink(FeatureTable &t)
{
    t.category("DeviceLinkControl",
               {"Features that control the link between the device and the host.", "设备链路控制",
                "控制设备与主机之间链路的特征。"},
               0x10800, "DeviceControl", "Expert");
    t.enumeration("DeviceTLType",
                  {"Transport layer type of the device.", "传输层类型", "设备的传输层类型。"})
        .entry("GigEVision", 0, "GigE Vision")
        .entry("USB3Vision", 3, "USB3 Vision")
        .entry("Custom", 65535, "自定义")
        .guru()
        .in(Int(4, 0).readOnly());
    t.integer(
         "DeviceLinkSelector",
         {"Selects which link of the device to control.", "链路选择", "选择要控制的设备链路。"})
        .in(Int(4, 0))
        .range("0", "0", "1")
        .expert();
    t.integer("DeviceLinkSpeed",
              {"Speed of transmission that was negotiated on the selected link.", "链路速率",
               "所选链路协商得到的传输速率。"})
        .in(Int(8, 125000000).readOnly())
        .unit("Bps")
        .shownAs("PureNumber")
        .expert()
        .selectedBy("DeviceLinkSelector");
    t.enumeration("DeviceLinkThroughputLimitMode",
                  {"Controls whether the throughput of the link is limited.", "链路带宽限制模式",
                   "控制是否限制链路的带宽。"})
        .entry("Off", 0, "关闭")
        .entry("On", 1, "开启")
        .expert()
        .locked()
        .in(Bits("LinkModeWord", 8, 2, 1))
        .selectedBy("DeviceLinkSelector");
    t.registerNode("LinkThroughputKiloReg", Int(4, 118000));
    t.intConverter("LinkThroughputConverter", "FROM / 1000", "TO * 1000", "LinkThroughputKiloReg");
    t.intSwissKnife("LinkThroughputLimited", "MODE = 1",
                    {{"MODE", "DeviceLinkThroughputLimitMode"}});
    t.integer("DeviceLinkThroughputLimit",
              {"Limits the bandwidth of the data that are sent on the selected link.",
               "链路带宽限制", "限制所选链路上发送数据的最大带宽。"})
        .from("LinkThroughputConverter")
        .range("1000000", "125000000", "1000")
        .unit("Bps")
        .available("LinkThroughputLimited")
        .streamable()
        .expert()
        .selectedBy("DeviceLinkSelector");
    t.integer("DeviceLinkCurrentThroughput",
              {"Current bandwidth of the data that are sent on the selected link.", "链路当前带宽",
               "所选链路上当前发送数据的带宽。"})
        .in(Int(4, 0).readOnly().moving(2000))
        .unit("Bps")
        .expert()
        .selectedBy("DeviceLinkSelector");
    t.enumeration("DeviceLinkHeartbeatMode",
                  {"Activates or deactivates the heartbeat of the link.", "链路心跳模式",
                   "启用或停用链路的心跳机制。"})
        .entry("Off", 0, "关闭")
        .entry("On", 1, "开启")
        .expert()
        .in(Bits("LinkModeWord", 0, 2, 1));
    t.converter("LinkHeartbeatConverter", "FROM / 1000", "TO * 1000", "GevHeartbeatTimeoutReg");
    t.floating(
         "DeviceLinkHeartbeatTimeout",
         {"Current heartbeat time-out of the link.", "链路心跳超时", "链路当前的心跳超时时间。"})
        .from("LinkHeartbeatConverter")
        .range("500000", "600000000")
        .unit("us")
        .guru();
    t.integer("DeviceStreamChannelCount",
              {"Number of streaming channels that the device supports.", "流通道数量",
               "设备支持的流通道数量。"})
        .from("GevStreamChannelCountReg")
        .expert();
    t.integer("DeviceStreamChannelSelector",
              {"Selects the stream channel to control.", "流通道选择", "选择要控制的流通道。"})
        .in(Int(4, 0))
        .range("0", "0", "1")
        .expert();
    t.integer("DeviceStreamChannelPacketSize",
              {"Size of the packets that are sent on the selected stream channel.", "流通道包大小",
               "所选流通道上发送的数据包大小。"})
        .from("GevSCPSPacketSizeReg")
        .range("576", "9000", "4")
        .unit("B")
        .locked()
        .expert()
        .selectedBy("DeviceStreamChannelSelector");
    t.integer("DeviceEventChannelCount",
              {"Number of event channels that the device supports.", "事件通道数量",
               "设备支持的事件通道数量。"})
        .in(Int(4, 1).readOnly())
        .expert();
}

void addClock(FeatureTable &t)
{
    t.category("DeviceClockControl",
               {"Features of the clocks and the timestamp of the device.", "设备时钟控制",
                "设备时钟与时间戳相关的特征。"},
               0x10C00, "DeviceControl", "Expert");
    t.enumeration("DeviceClockSelector",
                  {"Selects the clock frequency to access from the device.", "时钟选择",
                   "选择要访问的设备时钟。"})
        .entry("Sensor", 0, "传感器时钟")
        .entry("SensorDigitization", 1, "传感器数字化时钟")
        .entry("CameraLink", 2, "CameraLink时钟", {"", "CameraLinkFitted", ""})
        .expert()
        .in(Int(4, 0));
    t.constant("CameraLinkFitted", 0);
    t.floating("DeviceClockFrequency",
               {"Frequency of the selected clock.", "时钟频率", "所选时钟的频率。"})
        .in(Real(8, 37125000.0)
                .numbers({37125000.0, 74250000.0, 85000000.0})
                .readOnly()
                .indexedBy("DeviceClockSelector", 3))
        .unit("Hz")
        .shownAs("PureNumber")
        .expert()
        .selectedBy("DeviceClockSelector");
    t.integer("Timestamp",
              {"Value of the timestamp counter at the last latch.", "时间戳",
               "最近一次锁存时时间戳计数器的值。"})
        .from("TimestampLatchValueReg")
        .unit("ns")
        .expert();
    t.command("TimestampReset",
              {"Resets the timestamp counter of the device.", "时间戳复位",
               "将设备的时间戳计数器清零。"})
        .expert()
        .runs(Trigger());
    t.command("TimestampLatch",
              {"Latches the timestamp counter into TimestampLatchValue.", "时间戳锁存",
               "将时间戳计数器的当前值锁存到时间戳锁存值。"})
        .expert()
        .runs(Trigger());
    t.integer("TimestampLatchValue",
              {"Latched value of the timestamp counter.", "时间戳锁存值", "时间戳计数器的锁存值。"})
        .in(Int(8, 0).readOnly().cachable("WriteThrough").invalidatedBy("TimestampLatch"))
        .unit("ns")
        .expert();
    t.integer("TimestampSynchronized",
              {"Tells whether the timestamp follows the clock of the network, 1 when it does.",
               "时间戳已同步", "指示时间戳是否与网络时钟同步，1表示已同步。"})
        .in(Bits("DeviceStateWord", 4, 1, 0).readOnly())
        .range("0", "1", "1")
        .shownAs("Boolean")
        .custom()
        .expert();
}

} // namespace

void addDeviceRows(FeatureTable &table, const AreaCameraIdentity &identity)
{
    table.category("DeviceControl",
                   {"Features that describe the device and control it as a whole.", "设备控制",
                    "描述设备信息并对设备整体进行控制的特征。"},
                   0x10000);
    addIdentity(table, identity);
    addService(table);
    addLink(table);
    addClock(table);
}
