#include "host/simulator/grabbercamera/GrabberCamera.h"

#include "host/simulator/description/DescriptionWriter.h"
#include "host/simulator/description/PlainRows.h"
#include "host/simulator/sfnc/DeviceFiles.h"
#include "host/simulator/sfnc/StandardBehaviour.h"
#include "host/simulator/sfnc/StandardRows.h"

namespace {

const char *const kModel = "SIM-C2K";
constexpr int kPortsOfBoard = 2;

void addRates(FeatureTable &t)
{
    t.resume("AcquisitionControl");
    const QVector<RealRow> reals = {
        {"AcquisitionFrameRate",
         {"Rate at which the frames are captured, in frames per second.", "采集帧率",
          "设备采集图像的帧率，单位为帧每秒。"},
         60,
         "1",
         "340",
         "Hz",
         RowOptions().standard().shownAs("Linear")},
    };
    addRows(t, reals);
}

void addLink(FeatureTable &t)
{
    t.category("CameraLink",
               {"Features of the Camera Link transport layer.", "Camera Link",
                "Camera Link传输层的特征。"},
               0x1A400, "TransportLayerControl");
    const QVector<ChoiceRow> choices = {
        {"ClConfiguration",
         {"Configuration of the cables between camera and grabber.", "CL配置",
          "相机与采集卡之间线缆的配置。"},
         {{"Base", 0, "基本配置"}, {"Medium", 1, "中级配置"}, {"Full", 2, "完全配置"}},
         0,
         RowOptions().standard().locked()},
        {"ClTimeSlotsCount",
         {"Number of time slots in which data of the taps are sent.", "CL时隙数",
          "发送各通道数据的时隙数。"},
         {{"One", 1, "1个"}, {"Two", 2, "2个"}, {"Three", 3, "3个"}},
         1,
         RowOptions().standard().locked()},
        {"DeviceTapGeometry",
         {"Order in which the taps of the sensor are sent.", "通道几何排列",
          "传感器各通道数据的发送顺序。"},
         {{"Geometry_1X_1Y", 0, "1X-1Y排列"}, {"Geometry_1X2_1Y", 1, "1X2-1Y排列"}},
         1,
         RowOptions().standard().locked()},
        {"DeviceSerialPortBaudRate",
         {"Speed of the serial port over which the grabber talks to the camera.", "串口波特率",
          "采集卡与相机通信所用串口的速率。"},
         {{"Baud9600", 9600, "9600波特"}, {"Baud115200", 115200, "115200波特"}},
         115200,
         RowOptions().standard().expert()},
    };
    addRows(t, choices);
    const QVector<NumberRow> numbers = {
        {"ClPixelClock",
         {"Frequency of the clock of the pixels.", "像素时钟", "像素时钟的频率。"},
         85000000,
         "",
         "",
         "Hz",
         RowOptions().readOnly().expert()},
        {"ClPort",
         {"Port of the grabber that the camera sits on.", "采集卡端口", "相机所接的采集卡端口。"},
         0,
         "",
         "",
         "",
         RowOptions().readOnly()},
    };
    addRows(t, numbers);
}

} // namespace

FeatureTable grabberCameraTable(const CameraInfo &info)
{
    FeatureTable table;
    table.setLittleEndian();
    addCameraInfoRows(table, info);
    addCameraImageRows(table, 2048, 2048);
    addCameraAcquisitionRows(table);
    addRates(table);
    addCameraTriggerRows(table, {{"FrameStart", "帧开始"}, {"FrameBurstStart", "帧突发开始"}});
    addAnalogRows(table);
    addDigitalIoRows(table);
    addCounterTimerRows(table);
    addEncoderRows(table);
    addReadoutRows(table);
    addUserSetRows(table);
    addCameraTransportRows(table);
    addLink(table);
    return table;
}

BuiltInDevice makeGrabberCamera(int instance)
{
    const int board = instance / kPortsOfBoard;
    CameraInfo info;
    info.m_strModel = kModel;
    info.m_strInfo = "Area scan, 2048 x 2048, Camera Link";
    info.m_strFirmware = "FW 0.9.12 build 412";
    info.m_strSerial = "SIC" + QByteArray::number(board + 1).rightJustified(8, '0');
    info.m_strUserId = "Grabber port " + QByteArray::number(instance % kPortsOfBoard);
    info.m_nBoardType = 9;
    const FeatureTable table = grabberCameraTable(info);
    BuiltInDevice device = builtDevice(
        table,
        {kModel, "Simulated Imaging", "Simulated area-scan camera with Camera Link",
         "C8F2E6A1-7D04-4B39-95B8-1F3E0D6A7C52", "3E5B9C70-F1A8-4269-8D4E-B7062C9A5F18"},
        std::make_unique<StandardBehaviour>(table, kGrabberCameraUserSets, QVector<DeviceFile>()));
    device.m_strSerial = QString::fromLatin1(info.m_strSerial);
    device.m_nDeviceType = 8;
    return device;
}
