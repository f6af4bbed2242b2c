#include "host/simulator/sfnc/CameraBasics.h"

#include "host/simulator/description/PlainRows.h"

namespace {

RowOptions fixed()
{
    return RowOptions().standard().readOnly();
}

} // namespace

void addCameraInfoRows(FeatureTable &t, const CameraInfo &info)
{
    t.category("DeviceControl",
               {"Features that describe the device and control it as a whole.", "设备控制",
                "描述设备信息并对设备整体进行控制的特征。"},
               0x10000);
    const QVector<StringRow> strings = {
        {"DeviceVendorName",
         {"Name of the manufacturer of the device.", "厂商名称", "设备制造商的名称。"},
         32,
         "Simulated Imaging",
         fixed()},
        {"DeviceModelName",
         {"Model of the device.", "型号名称", "设备的型号。"},
         32,
         info.m_strModel.constData(),
         fixed()},
        {"DeviceManufacturerInfo",
         {"Manufacturer information about the device.", "厂商信息", "制造商提供的设备附加信息。"},
         48,
         info.m_strInfo.constData(),
         fixed().expert()},
        {"DeviceVersion",
         {"Version of the device.", "设备版本", "设备的版本。"},
         32,
         "1.3.0",
         fixed()},
        {"DeviceFirmwareVersion",
         {"Version of the firmware in the device.", "固件版本", "设备中固件的版本。"},
         32,
         info.m_strFirmware.constData(),
         fixed().expert()},
        {"DeviceSerialNumber",
         {"Serial number of the device. It is unique among the devices of one manufacturer.",
          "序列号", "设备的序列号，在同一制造商的设备中唯一。"},
         16,
         info.m_strSerial.constData(),
         fixed().expert()},
        {"DeviceUserID",
         {"Name that the user gives to the device. It is kept when the device is switched off.",
          "用户自定义名称", "用户为设备设定的名称，断电后保持不变。"},
         16,
         info.m_strUserId.constData(),
         RowOptions().standard().transient().property("Streamable", "Yes")},
    };
    addRows(t, strings);
    const QVector<ChoiceRow> choices = {
        {"DeviceScanType",
         {"Scan type of the sensor of the device.", "扫描类型", "设备传感器的扫描类型。"},
         {{"Areascan", 0, "面阵"}, {"Linescan", 1, "线阵"}},
         info.m_nScanType,
         fixed().expert()},
        {"DeviceTemperatureSelector",
         {"Selects the location within the device where the temperature is measured.",
          "温度测量位置选择", "选择设备内部测量温度的位置。"},
         {{"Sensor", 0, "传感器"}, {"Mainboard", 1, "主板"}},
         0,
         RowOptions().standard().transient().expert()},
    };
    addRows(t, choices);
    addTemperatureRows(t, Int(2, 0).values({391, 427}));
    const QVector<NumberRow> numbers = {
        {"BoardDeviceType",
         {"Number of the type of the main board.", "主板类型", "主板类型的编号。"},
         info.m_nBoardType,
         "",
         "",
         "",
         RowOptions().readOnly().guru()},
    };
    addRows(t, numbers);
    t.command("DeviceReset",
              {"Resets the device to its power up state. The connection is lost and the device has "
               "to be found again.",
               "设备复位", "将设备复位到上电状态，连接会断开，需要重新发现设备。"})
        .guru()
        .runs(Trigger());
}

void addCameraImageRows(FeatureTable &t, int sensorWidth, int maxHeight)
{
    t.category("ImageFormatControl",
               {"Features of the size and format of the image.", "图像格式控制",
                "控制图像尺寸与格式的特征。"},
               0x11000);
    const QByteArray height = QByteArray::number(maxHeight);
    const QVector<NumberRow> numbers = {
        {"SensorWidth",
         {"Effective width of the sensor in pixels.", "传感器宽度",
          "传感器的有效宽度，单位为像素。"},
         sensorWidth,
         "",
         "",
         "px",
         fixed().expert()},
        {"Height",
         {"Height of the image that the device provides, in pixels.", "高度",
          "设备输出图像的高度，单位为像素。"},
         maxHeight / 2,
         "1",
         height.constData(),
         "px",
         RowOptions().standard().shownAs("Linear").locked()},
    };
    addRows(t, numbers);
    t.intSwissKnife("WidthLimit", "SENSOR - OFFSET",
                    {{"SENSOR", "SensorWidthReg"}, {"OFFSET", "OffsetXReg"}});
    t.intSwissKnife("OffsetXLimit", "SENSOR - WIDTH",
                    {{"SENSOR", "SensorWidthReg"}, {"WIDTH", "WidthReg"}});
    t.integer("Width",
              {"Width of the image that the device provides, in pixels.", "宽度",
               "设备输出图像的宽度，单位为像素。"})
        .in(Int(4, sensorWidth))
        .range("64", "", "16")
        .max("WidthLimit")
        .unit("px")
        .shownAs("Linear")
        .locked();
    t.integer("OffsetX",
              {"Horizontal distance from the origin to the image, in pixels.", "X方向偏移",
               "图像相对原点的水平偏移，单位为像素。"})
        .in(Int(4, 0))
        .range("0", "", "16")
        .max("OffsetXLimit")
        .unit("px")
        .shownAs("Linear")
        .locked();
    t.constant("ColorSensorFitted", 0);
    t.enumeration(
         "PixelFormat",
         {"Format of the pixels that the device provides.", "像素格式", "设备输出的像素格式。"})
        .entry("Mono8", 0x01080001, "8位黑白")
        .entry("Mono10", 0x01100003, "10位黑白")
        .entry("Mono12", 0x01100005, "12位黑白")
        .locked()
        .in(Int(4, 0x01080001));
    t.intSwissKnife("PixelBitsFormula", "(FORMAT >> 16) & 255", {{"FORMAT", "PixelFormatReg"}});
    t.integer("PixelSize",
              {"Number of bits of a pixel in the image.", "像素位数", "图像中每个像素占用的位数。"})
        .from("PixelBitsFormula")
        .unit("bit")
        .expert();
    t.boolean("ReverseX", {"Flips the image horizontally.", "水平镜像", "将图像沿水平方向翻转。"})
        .in(Int(4, 0))
        .locked();
    const QVector<ChoiceRow> choices = {
        {"TestPattern",
         {"Image that the device generates instead of that of the sensor.", "测试图像",
          "设备生成的用于代替传感器图像的测试图。"},
         {{"Off", 0, "关闭"},
          {"GreyHorizontalRamp", 1, "水平灰度渐变"},
          {"FrameCounter", 20, "帧计数"}},
         0,
         RowOptions().standard()},
    };
    addRows(t, choices);
}

void addTemperatureRows(FeatureTable &t, RegisterSpec tenths)
{
    const auto count = quint32(tenths.m_values.size());
    t.registerNode(
        "DeviceTemperatureRaw",
        tenths.signedValue().readOnly().moving(1000).indexedBy("DeviceTemperatureSelector", count));
    t.converter("DeviceTemperatureConverter", "FROM * 10", "TO / 10.0", "DeviceTemperatureRaw");
    t.floating("DeviceTemperature",
               {"Temperature of the device in degrees Celsius, measured at the selected location.",
                "设备温度", "所选位置处的设备温度，单位为摄氏度。"})
        .from("DeviceTemperatureConverter")
        .range("-40", "125")
        .unit("C")
        .shownAs("PureNumber")
        .readOnly()
        .selectedBy("DeviceTemperatureSelector");
}

void addStartStopRows(FeatureTable &t)
{
    t.command("AcquisitionStart",
              {"Starts the acquisition of the device.", "开始采集", "启动设备的图像采集。"})
        .runs(Trigger());
    t.command("AcquisitionStop",
              {"Stops the acquisition of the device at the end of the current frame.", "停止采集",
               "在当前帧结束后停止设备的图像采集。"})
        .runs(Trigger());
}

void addCameraAcquisitionRows(FeatureTable &t)
{
    t.category("AcquisitionControl",
               {"Features of the acquisition of images.", "采集控制", "控制图像采集的特征。"},
               0x12000);
    t.enumeration("AcquisitionMode",
                  {"Sets the acquisition mode of the device.", "采集模式", "设置设备的采集模式。"})
        .entry("Continuous", 0, "连续采集")
        .entry("SingleFrame", 1, "单帧采集")
        .locked()
        .in(Int(4, 0));
    addStartStopRows(t);
    t.floating("ResultingFrameRate",
               {"Rate that the device reaches with its present settings, in frames per second.",
                "实际帧率", "设备在当前设置下实际达到的帧率，单位为帧每秒。"})
        .in(Real(4, 20.0).readOnly().moving(2000))
        .unit("Hz")
        .custom();
    const QVector<ChoiceRow> choices = {
        {"ExposureMode",
         {"Sets the operation mode of the exposure.", "曝光模式", "设置曝光的工作模式。"},
         {{"Timed", 1, "定时曝光"}, {"TriggerWidth", 2, "触发宽度"}},
         1,
         RowOptions().standard()},
        {"ExposureAuto",
         {"Sets the automatic exposure mode.", "自动曝光", "设置自动曝光的方式。"},
         {{"Off", 0, "关闭"}, {"Continuous", 2, "连续"}},
         0,
         RowOptions().standard()},
    };
    addRows(t, choices);
    t.intSwissKnife("ExposureTimeLocked", "(AUTO <> 0) || (MODE <> 1)",
                    {{"AUTO", "ExposureAutoReg"}, {"MODE", "ExposureModeReg"}});
    const QVector<RealRow> reals = {
        {"ExposureTime",
         {"Exposure time of the sensor.", "曝光时间", "传感器的曝光时间。"},
         30,
         "2",
         "10000",
         "us",
         RowOptions().standard().shownAs("Logarithmic").locked("ExposureTimeLocked")},
    };
    addRows(t, reals);
}

void addCameraTriggerRows(FeatureTable &t,
                          const QVector<QPair<const char *, const char *>> &selectors)
{
    t.category("TriggerControl",
               {"Features of the triggers that start an acquisition.", "触发控制",
                "控制启动采集的触发的特征。"},
               0x12400, "AcquisitionControl");
    QVector<EntryRow> entries;
    for (const auto &selector : selectors) {
        entries.append({selector.first, entries.size(), selector.second});
    }
    const auto count = quint32(entries.size());
    const auto selected = [count] {
        return RowOptions()
            .standard()
            .indexedBy("TriggerSelector", count)
            .selectedBy("TriggerSelector");
    };
    const QVector<ChoiceRow> choices = {
        {"TriggerSelector",
         {"Selects the type of trigger to configure.", "触发类型选择", "选择要配置的触发类型。"},
         entries,
         0,
         RowOptions().standard()},
        {"TriggerMode",
         {"Controls whether the selected trigger is active.", "触发模式", "控制所选触发是否启用。"},
         {{"Off", 0, "关闭"}, {"On", 1, "开启"}},
         0,
         selected()},
        {"TriggerSource",
         {"Specifies the signal that is the source of the trigger.", "触发源",
          "指定触发信号的来源。"},
         {{"Software", 0, "软触发"}, {"Line0", 1, "输入线0"}, {"Encoder0", 2, "编码器0"}},
         0,
         selected()},
        {"TriggerActivation",
         {"Specifies the edge of the source that activates the trigger.", "触发沿",
          "指定激活触发的信号边沿。"},
         {{"RisingEdge", 0, "上升沿"}, {"FallingEdge", 1, "下降沿"}},
         0,
         selected()},
    };
    addRows(t, choices);
    t.command("TriggerSoftware", {"Generates an internal trigger.", "软触发", "产生一次内部触发。"})
        .runs(Trigger())
        .selectedBy("TriggerSelector");
    const QVector<NumberRow> numbers = {
        {"TriggerSoftwareCount",
         {"Number of software triggers since the device was switched on.", "软触发计数",
          "设备上电以来的软触发次数。"},
         0,
         "",
         "",
         "",
         RowOptions().readOnly().moving().expert()},
    };
    addRows(t, numbers);
}

void addCameraTransportRows(FeatureTable &t)
{
    t.category("TransportLayerControl",
               {"Features of the transport layer.", "传输层控制", "控制传输层的特征。"}, 0x1A000);
    t.intSwissKnife("PayloadFormula", "WIDTH * HEIGHT * BPP / 8",
                    {{"WIDTH", "WidthReg"}, {"HEIGHT", "HeightReg"}, {"BPP", "PixelBitsFormula"}});
    t.integer("PayloadSize",
              {"Number of bytes that are transferred for each image.", "有效载荷大小",
               "每幅图像传输的字节数。"})
        .from("PayloadFormula")
        .unit("B")
        .expert();
    t.integer("TLParamsLocked",
              {"Locks features of the transport layer while an acquisition runs. The host sets it.",
               "传输层参数锁定", "采集期间锁定传输层相关特征，由主机设置。"})
        .value("0")
        .range("0", "1", "1")
        .invisible();
}
