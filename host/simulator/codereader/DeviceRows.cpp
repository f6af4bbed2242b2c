#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"
#include "host/simulator/sfnc/CameraBasics.h"

namespace {

// Beyond the reach of single precision and of six decimal digits, as a few real devices lay their service registers.
constexpr quint64 kServiceAddress = 0x7654324;

void addIdentity(FeatureTable &t, const CodeReaderIdentity &identity)
{
    const QVector<StringRow> rows = {
        {"DeviceVendorName",
         {"Name of the manufacturer of the device.", "厂商名称", "设备制造商的名称。"},
         32,
         "Simulated Imaging",
         RowOptions().standard().at(0x48).readOnly()},
        {"DeviceModelName",
         {"Model of the device.", "型号名称", "设备的型号。"},
         32,
         identity.m_network.m_strModel.constData(),
         RowOptions().standard().at(0x68).readOnly()},
        {"DeviceManufacturerInfo",
         {"Manufacturer information about the device.", "厂商信息", "制造商提供的设备附加信息。"},
         48,
         "Fixed mount code reader, 4 segment light",
         RowOptions().standard().at(0xA8).readOnly().expert()},
        {"DeviceVersion",
         {"Version of the device.", "设备版本", "设备的版本。"},
         32,
         "4.0.2",
         RowOptions().standard().at(0x88).readOnly()},
        {"DeviceFirmwareVersion",
         {"Version of the firmware in the device.", "固件版本", "设备中固件的版本。"},
         32,
         "FW 4.2.1 build 3307",
         RowOptions().standard().readOnly().expert()},
        {"ZRHDeviceFirmwareVersion",
         {"Version of the firmware of the reading board.", "读码板固件版本",
          "读码板中固件的版本。"},
         32,
         "ZRH 4.2.1",
         RowOptions().readOnly().expert()},
        {"ZRADeviceFirmwareVersion",
         {"Version of the firmware of the second reading board, on devices that have one.",
          "第二读码板固件版本", "第二读码板中固件的版本，仅部分设备具有。"},
         32,
         "",
         RowOptions().readOnly().expert().implemented("SecondBoardFitted")},
        {"dm_version",
         {"Version of the code reading library in the device.", "读码算法版本",
          "设备中读码算法库的版本。"},
         32,
         "dm 2.8.0",
         RowOptions().readOnly()},
        {"DeviceSerialNumber",
         {"Serial number of the device. It is unique among the devices of one manufacturer.",
          "序列号", "设备的序列号，在同一制造商的设备中唯一。"},
         16,
         identity.m_strSerial.constData(),
         RowOptions().standard().at(0xD8).readOnly().expert()},
    };
    addRows(t, rows);
    t.constant("SecondBoardFitted", 0);
    t.string("DeviceUserID",
             {"Name that the user gives to the device. It is kept when the device is switched off.",
              "用户自定义名称", "用户为设备设定的名称，断电后保持不变。"},
             Text(16, identity.m_strUserId).at(0xE8).transient())
        .streamable();
    const QVector<NumberRow> numbers = {
        {"ProductType",
         {"Number of the product family that the device belongs to.", "产品类型",
          "设备所属产品系列的编号。"},
         identity.m_nProductType,
         "",
         "",
         "",
         RowOptions().readOnly().expert()},
        {"BoardDeviceType",
         {"Number of the type of the main board.", "主板类型", "主板类型的编号。"},
         2,
         "",
         "",
         "",
         RowOptions().readOnly().guru()},
    };
    addRows(t, numbers);
    t.enumeration("DeviceScanType",
                  {"Scan type of the sensor of the device.", "扫描类型", "设备传感器的扫描类型。"})
        .entry("Areascan", 0, "面阵")
        .entry("Linescan", 1, "线阵")
        .expert()
        .in(Int(4, 0).readOnly());
}

void addState(FeatureTable &t)
{
    t.enumeration("DeviceTemperatureSelector",
                  {"Selects the location within the device where the temperature is measured.",
                   "温度测量位置选择", "选择设备内部测量温度的位置。"})
        .entry("Sensor", 0, "传感器")
        .entry("Processor", 1, "处理器")
        .expert()
        .in(Int(4, 0).transient());
    addTemperatureRows(t, Int(2, 0).values({436, 587}));
    const QVector<NumberRow> rows = {
        {"DeviceRunTime",
         {"Time since the device was switched on.", "运行时间", "设备上电以来的时间。"},
         0,
         "",
         "",
         "s",
         RowOptions().readOnly().moving(1000).expert()},
        {"ProcessorLoad",
         {"Share of the processor's time that reading takes.", "处理器负载",
          "读码占用处理器时间的比例。"},
         12,
         "0",
         "100",
         "%",
         RowOptions().readOnly().moving(2000).expert()},
    };
    addRows(t, rows);
    t.command("DeviceReset",
              {"Resets the device to its power up state. The connection is lost and the device has "
               "to be found again.",
               "设备复位", "将设备复位到上电状态，连接会断开，需要重新发现设备。"})
        .expert()
        .runs(Trigger());
    t.command("RecoverFactory",
              {"Brings the whole device back to the state of delivery, user sets included, and "
               "restarts it.",
               "恢复出厂设置", "将整个设备（含用户参数组）恢复到出厂状态并重新启动。"})
        .custom()
        .runs(Trigger());
}

void addOperation(FeatureTable &t)
{
    const QVector<SwitchRow> switches = {
        {"Language",
         {"Language of the texts that the device itself shows, on for Chinese.", "设备语言",
          "设备自身所显示文字的语言，开启为中文。"},
         0},
        {"AutoWorkReal",
         {"Starts reading by itself when the device is switched on.", "上电自动工作",
          "设备上电后自动开始读码。"},
         1},
        {"LockIPEnable",
         {"Protects the IP address of the device against a change from outside.", "锁定IP",
          "禁止从外部修改设备的IP地址。"},
         0,
         RowOptions().expert()},
        {"ForceIPEnable",
         {"Lets a host force an IP address on the device.", "允许强制IP",
          "允许主机强制设置设备的IP地址。"},
         1,
         RowOptions().expert()},
        {"PreventingIllegalOccupation",
         {"Keeps hosts from taking control that have not signed on.", "防非法占用",
          "阻止未登录的主机获取控制权。"},
         0,
         RowOptions().expert()},
    };
    addRows(t, switches);
    const QVector<ChoiceRow> choices = {
        {"RunningMode",
         {"What the device does with its images. Setup takes the output to the host alone.",
          "运行模式", "设备如何使用图像，调试模式下仅向主机输出。"},
         {{"Test", 0, "测试模式"}, {"Normal", 1, "正常模式"}, {"Setup", 2, "调试模式"}},
         1},
        {"VerifyEdition",
         {"Edition of the verification functions.", "校验版本", "校验功能的版本。"},
         {{"Basic", 0, "基础模式"}, {"Mode", 1, "先进模式", EntryConditions(), " Mode"}},
         0,
         RowOptions().expert()},
        {"BleOutput",
         {"Sends results by Bluetooth too. The change takes effect after a restart.", "蓝牙输出",
          "同时通过蓝牙输出结果，重启后生效。"},
         {{"Off", 0, "关闭"}, {"On", 1, "开启"}},
         0,
         RowOptions().expert()},
    };
    addRows(t, choices);
    t.string(
         "ManualSetTime",
         {"Date and time of the clock of the device.", "手动设置时间", "设备时钟的日期与时间。"},
         Text(32, "2024:01:01:00:00:00").transient())
        .custom();
}

void addService(FeatureTable &t)
{
    t.category("ServiceControl",
               {"Registers for service. They are not meant for users.", "维护",
                "用于维护的寄存器，不供用户使用。"},
               0x2A000, "DeviceControl", "Guru");
    t.enumeration("ServiceSelector",
                  {"Selects the board whose service register is shown.", "维护对象选择",
                   "选择所显示维护寄存器对应的板卡。"})
        .entry("SensorBoard", 0, "传感器板")
        .entry("ReadingBoard", 1, "读码板")
        .custom()
        .guru()
        .in(Int(4, 0).transient());
    t.intSwissKnife("ServiceOffset", "SEL * 4", {{"SEL", "ServiceSelectorReg"}});
    t.integer("ServiceValue",
              {"Service register of the selected board.", "维护寄存器", "所选板卡的维护寄存器。"})
        .in(Int(4, 0x51).values({0x51, 0xA2}).at(kServiceAddress).offsetBy("ServiceOffset", 2))
        .shownAs("HexNumber")
        .custom()
        .guru()
        .selectedBy("ServiceSelector");
}

} // namespace

void addReaderDeviceRows(FeatureTable &table, const CodeReaderIdentity &identity)
{
    table.category("DeviceControl",
                   {"Features that describe the device and control it as a whole.", "设备控制",
                    "描述设备信息并对设备整体进行控制的特征。"},
                   0x10000);
    addIdentity(table, identity);
    addState(table);
    addOperation(table);
    addService(table);
}
