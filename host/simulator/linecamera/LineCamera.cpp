#include "host/simulator/linecamera/LineCamera.h"

#include "host/simulator/description/DescriptionWriter.h"
#include "host/simulator/description/PlainRows.h"
#include "host/simulator/linecamera/LineCameraBehaviour.h"
#include "host/simulator/sfnc/DeviceFiles.h"
#include "host/simulator/sfnc/StandardRows.h"

namespace {

const char *const kModel = "SIM-L8K";
constexpr int kSensorWidth = 8192;
constexpr int kLargestHeight = 16384;
constexpr quint32 kLutBytes = 2 * 1024 * 4;

void addSecondFirmware(FeatureTable &t)
{
    t.resume("DeviceControl");
    t.string("ZRADeviceFirmwareVersion",
             {"Version of the firmware of the processing board.", "处理板固件版本",
              "处理板中固件的版本。"},
             Text(32, "ZRA 1.8.3").readOnly())
        .custom()
        .expert();
}

void addLineRates(FeatureTable &t)
{
    t.category("LineRateControl",
               {"Features of the rate of the lines.", "行频控制", "控制行频的特征。"}, 0x12200,
               "AcquisitionControl");
    t.boolean("AcquisitionLineRateEnable",
              {"Controls whether the AcquisitionLineRate feature is used to control the rate.",
               "行频控制使能", "控制是否用采集行频限制行频。"})
        .in(Int(4, 1));
    t.intSwissKnife("LineRateFixed", "ENABLE = 0", {{"ENABLE", "AcquisitionLineRateEnableReg"}});
    t.swissKnife("LineRateLimit", "1000000.0 / (EXPOSURE + 2.5)",
                 {{"EXPOSURE", "ExposureTimeReg"}});
    t.floating("AcquisitionLineRate",
               {"Rate at which the lines are captured, in lines per second.", "采集行频",
                "设备采集图像行的频率，单位为行每秒。"})
        .in(Real(4, 20000.0))
        .range("100", "")
        .max("LineRateLimit")
        .unit("Hz")
        .shownAs("Logarithmic")
        .locked("LineRateFixed");
    const QVector<RealRow> reals = {
        {"ResultingLineRate",
         {"Rate of lines that the device reaches with its present settings.", "实际行频",
          "设备在当前设置下实际达到的行频。"},
         20000,
         "",
         "",
         "Hz",
         RowOptions().readOnly().moving(1000)},
    };
    addRows(t, reals);
    const QVector<ChoiceRow> choices = {
        {"TDIMode",
         {"Controls whether several rows of the sensor add up to one line.", "TDI模式",
          "控制是否将传感器多行累加为一行。"},
         {{"Off", 0, "关闭"}, {"On", 1, "开启"}},
         0,
         RowOptions().locked()},
        {"ScanDirection",
         {"Direction in which the object passes the camera.", "扫描方向", "物体经过相机的方向。"},
         {{"Forward", 0, "正向"}, {"Reverse", 1, "反向"}},
         0},
    };
    addRows(t, choices);
    t.intSwissKnife("TDIOff", "MODE = 0", {{"MODE", "TDIModeReg"}});
    const QVector<NumberRow> numbers = {
        {"TDIStages",
         {"Number of rows of the sensor that add up to one line.", "TDI级数",
          "累加为一行的传感器行数。"},
         16,
         "1",
         "256",
         "",
         RowOptions().locked("TDIOff")},
    };
    addRows(t, numbers);
}

void addFlatField(FeatureTable &t)
{
    t.category("FlatFieldControl",
               {"Features that even out the brightness along the line.", "平场校正",
                "均衡整行亮度的特征。"},
               0x14000, "Root", "Expert");
    const QVector<SwitchRow> switches = {
        {"FFCEnable",
         {"Controls whether the flat field correction is applied.", "平场校正使能",
          "控制是否启用平场校正。"},
         0,
         RowOptions().expert()},
    };
    addRows(t, switches);
    const QVector<ChoiceRow> choices = {
        {"FFCSelector",
         {"Selects the set of coefficients of the flat field.", "平场参数组", "选择平场系数组。"},
         {{"Set1", 1, "第1组"}, {"Set2", 2, "第2组"}},
         1,
         RowOptions().expert()},
    };
    addRows(t, choices);
    const QVector<NumberRow> numbers = {
        {"FFCTarget",
         {"Grey value that the flat field correction aims at.", "平场目标灰度",
          "平场校正的目标灰度值。"},
         200,
         "1",
         "4095",
         "",
         RowOptions().expert().shownAs("Linear")},
    };
    addRows(t, numbers);
}

void addUsb(FeatureTable &t)
{
    t.category("USB3Vision",
               {"Features of the USB3 Vision transport layer.", "USB3 Vision",
                "USB3 Vision传输层的特征。"},
               0x1A400, "TransportLayerControl");
    const QVector<NumberRow> numbers = {
        {"U3VVersionMajor",
         {"Major version of the USB3 Vision standard that the device follows.", "USB3 Vision主版本",
          "设备所遵循的USB3 Vision标准的主版本号。"},
         1,
         "",
         "",
         "",
         RowOptions().standard().readOnly().expert()},
        {"U3VVersionMinor",
         {"Minor version of the USB3 Vision standard that the device follows.", "USB3 Vision次版本",
          "设备所遵循的USB3 Vision标准的次版本号。"},
         0,
         "",
         "",
         "",
         RowOptions().standard().readOnly().expert()},
        {"U3VMaxCommandTransferLength",
         {"Largest command that the device takes.", "最大命令长度", "设备可接受的最大命令长度。"},
         1024,
         "",
         "",
         "B",
         RowOptions().standard().readOnly().guru()},
        {"DeviceLinkSpeed",
         {"Speed of transmission that was negotiated on the link.", "链路速率",
          "链路协商得到的传输速率。"},
         400000000,
         "",
         "",
         "Bps",
         RowOptions().standard().readOnly().expert()},
        {"DeviceLinkThroughputLimit",
         {"Limits the bandwidth of the data that are sent.", "链路带宽限制",
          "限制发送数据的最大带宽。"},
         360000000,
         "1000000",
         "400000000",
         "Bps",
         RowOptions().standard().expert()},
    };
    addRows(t, numbers);
}

} // namespace

FeatureTable lineCameraTable(const CameraInfo &info)
{
    FeatureTable table;
    table.setLittleEndian();
    addCameraInfoRows(table, info);
    addSecondFirmware(table);
    addCameraImageRows(table, kSensorWidth, kLargestHeight);
    addCameraAcquisitionRows(table);
    addLineRates(table);
    addCameraTriggerRows(table, {{"LineStart", "行开始"}, {"FrameStart", "帧开始"}});
    addAnalogRows(table);
    addFlatField(table);
    addDigitalIoRows(table);
    addEncoderRows(table);
    addLutRows(table);
    table
        .bytes("LUTValueAll",
               {"All values of the look-up tables as one block.", "查找表全部值",
                "全部查找表数值组成的数据块。"},
               Text(kLutBytes, {}).within("LUTValueReg"))
        .guru();
    addReadoutRows(table);
    addUserSetRows(table);
    addFileAccessRows(table, lineCameraFiles());
    addCameraTransportRows(table);
    addUsb(table);
    return table;
}

QVector<DeviceFile> lineCameraFiles()
{
    return {
        {"UserSet1", "User Set1", "用户参数组1", "UserSet1\nAcquisitionLineRate=20000\n"},
        {"FlatField", "Flat Field", "平场系数", QByteArray(2048, '\x40')},
    };
}

BuiltInDevice makeLineCamera(int instance)
{
    CameraInfo info;
    info.m_strModel = kModel;
    info.m_strInfo = "Line scan, 8192 pixels, 3.5 um";
    info.m_strFirmware = "FW 1.8.3 build 1190";
    info.m_strSerial = "SIL" + QByteArray::number(instance + 1).rightJustified(8, '0');
    info.m_strUserId = "Line camera " + QByteArray::number(instance + 1);
    info.m_nScanType = 1;
    info.m_nBoardType = 5;
    const FeatureTable table = lineCameraTable(info);
    BuiltInDevice device = builtDevice(
        table,
        {kModel, "Simulated Imaging", "Simulated line-scan camera with 8192 pixels",
         "4B9D7E21-8C3A-4D56-A0F1-92E6B5C7D8F3", "97C1A5E4-2B6F-4D83-B0A9-E1F85C3D7624"},
        std::make_unique<LineCameraBehaviour>(table));
    device.m_strSerial = QString::fromLatin1(info.m_strSerial);
    device.m_nDeviceType = 4;
    device.m_nScanType = 4;
    return device;
}
