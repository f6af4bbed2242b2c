#include "host/simulator/areacamera/AreaCamera.h"
#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/CameraBasics.h"

namespace {

void addAcquisition(FeatureTable &t)
{
    t.enumeration(
         "AcquisitionMode",
         {"Sets the acquisition mode of the device. It defines how many frames an acquisition has.",
          "采集模式", "设置设备的采集模式，决定一次采集包含的帧数。"})
        .entry("Continuous", 0, "连续采集")
        .entry("SingleFrame", 1, "单帧采集")
        .entry("MultiFrame", 2, "多帧采集")
        .locked()
        .in(Bits("AcquisitionModeWord", 0, 4, 0));
    addStartStopRows(t);
    t.command("AcquisitionAbort",
              {"Aborts the acquisition immediately. A frame in progress is not completed.",
               "中止采集", "立即中止采集，正在进行的帧不会完成。"})
        .expert()
        .runs(Trigger());
    t.command("AcquisitionArm",
              {"Arms the device before an AcquisitionStart command and checks all parameters.",
               "准备采集", "在开始采集之前使设备进入就绪状态并检查所有参数。"})
        .expert()
        .locked()
        .runs(Int(4, 0).transient());
    t.intSwissKnife("MultiFrameMode", "MODE = 2", {{"MODE", "AcquisitionModeReg"}});
    t.integer("AcquisitionFrameCount",
              {"Number of frames to acquire in MultiFrame acquisition mode.", "采集帧数",
               "多帧采集模式下要采集的帧数。"})
        .in(Int(4, 10))
        .range("1", "65535", "1")
        .shownAs("Logarithmic")
        .available("MultiFrameMode")
        .locked();
    t.registerNode("BurstFrameCountRaw", Int(2, 0).littleEndian());
    t.intConverter("BurstFrameCountConverter", "FROM - 1", "TO + 1", "BurstFrameCountRaw");
    t.integer("AcquisitionBurstFrameCount",
              {"Number of frames to acquire for each FrameBurstStart trigger.", "突发采集帧数",
               "每次帧突发触发所采集的帧数。"})
        .from("BurstFrameCountConverter")
        .range("1", "1024", "1")
        .shownAs("Linear")
        .streamable()
        .locked();
    t.boolean("AcquisitionFrameRateEnable",
              {"Controls whether the AcquisitionFrameRate feature is writable and used to control "
               "the rate.",
               "帧率控制使能", "控制采集帧率是否可写并用于限制帧率。"})
        .in(Bits("AcquisitionModeWord", 8, 1, 1));
    t.intSwissKnife("FrameRateFixed", "ENABLE = 0", {{"ENABLE", "AcquisitionFrameRateEnableReg"}});
    t.floating("AcquisitionFrameRate",
               {"Rate at which the frames are captured, in frames per second.", "采集帧率",
                "设备采集图像的帧率，单位为帧每秒。"})
        .in(Real(4, 20.0))
        .range("0.1", "")
        .max("FrameRateLimit")
        .unit("Hz")
        .shownAs("Linear")
        .locked("FrameRateFixed");
    t.swissKnife("FrameRateLimit", "1000000.0 / (READOUT + 40.0)",
                 {{"READOUT", "ReadoutTimeFormula"}});
    t.floating("ResultingFrameRate",
               {"Rate that the device reaches with its present settings, in frames per second.",
                "实际帧率", "设备在当前设置下实际达到的帧率，单位为帧每秒。"})
        .in(Real(4, 20.0).readOnly().moving(2000))
        .unit("Hz")
        .custom();
    t.swissKnife("FramePeriodFormula", "1000000.0 / RATE", {{"RATE", "AcquisitionFrameRateReg"}});
    t.floating("AcquisitionFramePeriod",
               {"Time between the starts of two frames at the AcquisitionFrameRate.", "帧周期",
                "在采集帧率下相邻两帧起始时刻之间的时间。"})
        .from("FramePeriodFormula")
        .range("0", "10000000")
        .unit("us")
        .custom()
        .expert();
    t.swissKnife("ReadoutTimeFormula", "(HEIGHT + 28) * 12.5 / TAPS * 4",
                 {{"HEIGHT", "HeightReg"}, {"TAPS", "SensorTapsReg"}});
    t.floating("SensorReadoutTime",
               {"Time that the sensor needs to read a frame out.", "传感器读出时间",
                "传感器读出一帧所需的时间。"})
        .from("ReadoutTimeFormula")
        .range("0", "1000000")
        .unit("us")
        .custom()
        .expert();
    t.enumeration("AcquisitionStatusSelector",
                  {"Selects the internal acquisition signal that AcquisitionStatus reads.",
                   "采集状态选择", "选择采集状态所读取的内部采集信号。"})
        .entry("AcquisitionTriggerWait", 0, "等待采集触发")
        .entry("AcquisitionActive", 1, "采集进行中")
        .entry("FrameTriggerWait", 2, "等待帧触发")
        .entry("FrameActive", 3, "帧进行中")
        .expert()
        .in(Int(4, 1).transient());
    t.registerNode("AcquisitionStatusWord", Int(4, 0).readOnly().moving());
    t.intSwissKnife("AcquisitionStatusFormula", "(STATUS >> SEL) & 1",
                    {{"STATUS", "AcquisitionStatusWord"}, {"SEL", "AcquisitionStatusSelectorReg"}});
    t.boolean("AcquisitionStatus",
              {"Reads the state of the selected internal acquisition signal.", "采集状态",
               "读取所选内部采集信号的状态。"})
        .from("AcquisitionStatusFormula")
        .expert()
        .selectedBy("AcquisitionStatusSelector");
}

void addTrigger(FeatureTable &t)
{
    t.category("TriggerControl",
               {"Features of the triggers that start an acquisition, a frame or an exposure.",
                "触发控制", "控制采集、帧或曝光触发的特征。"},
               0x12400, "AcquisitionControl");
    t.enumeration(
         "TriggerSelector",
         {"Selects the type of trigger to configure.", "触发类型选择", "选择要配置的触发类型。"})
        .entry("AcquisitionStart", 0, "采集开始")
        .entry("FrameStart", 1, "帧开始")
        .entry("FrameBurstStart", 2, "帧突发开始")
        .in(Int(4, 1));
    t.enumeration(
         "TriggerMode",
         {"Controls whether the selected trigger is active.", "触发模式", "控制所选触发是否启用。"})
        .entry("Off", 0, "关闭")
        .entry("On", 1, "开启")
        .in(Int(4, 0).indexedBy("TriggerSelector", 3))
        .selectedBy("TriggerSelector");
    t.intSwissKnife("TriggerActive", "MODE = 1", {{"MODE", "TriggerModeReg"}});
    t.intSwissKnife("TimerTriggersFrames", "SOURCE <> 0", {{"SOURCE", "TimerTriggerSource"}});
    t.command("TriggerSoftware",
              {"Generates an internal trigger. TriggerSource must be set to Software.", "软触发",
               "产生一次内部触发，触发源须设为软触发。"})
        .runs(Trigger())
        .selectedBy("TriggerSelector");
    t.integer("TriggerSoftwareCount",
              {"Number of software triggers since the device was switched on.", "软触发计数",
               "设备上电以来的软触发次数。"})
        .in(Int(4, 0).readOnly().moving())
        .custom()
        .expert();
    t.enumeration(
         "TriggerSource",
         {"Specifies the internal signal or physical input line that is the source of the trigger.",
          "触发源", "指定作为触发源的内部信号或物理输入线。"})
        .entry("Software", 0, "软触发")
        .entry("Line0", 1, "输入线0")
        .entry("Line1", 2, "输入线1")
        .entry("Counter0End", 3, "计数器0结束")
        .entry("Timer0End", 4, "定时器0结束", {"TimerTriggersFrames"})
        .in(Int(4, 0).indexedBy("TriggerSelector", 3))
        .selectedBy("TriggerSelector");
    t.intSwissKnife("TriggerFromLine", "(SOURCE = 1) || (SOURCE = 2)",
                    {{"SOURCE", "TriggerSourceReg"}});
    t.enumeration("TriggerActivation",
                  {"Specifies the edge or level of the source that activates the trigger.",
                   "触发沿", "指定激活触发的信号边沿或电平。"})
        .entry("RisingEdge", 0, "上升沿")
        .entry("FallingEdge", 1, "下降沿")
        .entry("AnyEdge", 2, "任意边沿")
        .entry("LevelHigh", 3, "高电平")
        .entry("LevelLow", 4, "低电平")
        .available("TriggerFromLine")
        .in(Int(4, 0).indexedBy("TriggerSelector", 3))
        .selectedBy("TriggerSelector");
    t.enumeration("TriggerOverlap",
                  {"Specifies when a trigger is accepted with respect to the previous frame.",
                   "触发重叠", "指定相对于前一帧何时可以接受触发。"})
        .entry("Off", 0, "关闭")
        .entry("ReadOut", 1, "读出期间")
        .entry("PreviousFrame", 2, "前一帧期间")
        .expert()
        .in(Int(4, 1));
    t.floating("TriggerDelay",
               {"Delay between the reception of the trigger and its effect.", "触发延迟",
                "从接收到触发到触发生效之间的延迟。"})
        .in(Real(8, 0.0).littleEndian().indexedBy("TriggerSelector", 3))
        .range("0", "1000000")
        .unit("us")
        .shownAs("Linear")
        .expert()
        .selectedBy("TriggerSelector");
    t.integer("TriggerDivider",
              {"Division factor for the incoming trigger pulses.", "触发分频",
               "输入触发脉冲的分频系数。"})
        .in(Int(2, 1))
        .range("1", "1024", "1")
        .expert();
    t.integer("TriggerMultiplier",
              {"Multiplication factor for the incoming trigger pulses.", "触发倍频",
               "输入触发脉冲的倍频系数。"})
        .in(Int(2, 1))
        .range("1", "16", "1")
        .expert();
}

void addExposure(FeatureTable &t)
{
    t.category("ExposureControl",
               {"Features of the exposure of the sensor.", "曝光控制", "控制传感器曝光的特征。"},
               0x12800, "AcquisitionControl");
    t.enumeration("ExposureMode",
                  {"Sets the operation mode of the exposure.", "曝光模式", "设置曝光的工作模式。"})
        .entry("Off", 0, "关闭")
        .entry("Timed", 1, "定时曝光")
        .entry("TriggerWidth", 2, "触发宽度", {"TriggerActive"})
        .in(Bits("ExposureWord", 0, 3, 1));
    t.registerNode("ExposureTimeRaw", Int(4, 50000));
    t.converter("ExposureTimeConverter", "FROM * 10", "TO / 10.0", "ExposureTimeRaw");
    t.intSwissKnife("ExposureTimeLocked", "(AUTO = 2) || (MODE <> 1)",
                    {{"AUTO", "ExposureAutoReg"}, {"MODE", "ExposureModeReg"}});
    t.floating("ExposureTime",
               {"Exposure time of the sensor when ExposureMode is Timed.", "曝光时间",
                "曝光模式为定时曝光时传感器的曝光时间。"})
        .from("ExposureTimeConverter")
        .min("ExposureAutoLowerLimit")
        .range("", "10000000")
        .unit("us")
        .shownAs("Logarithmic")
        .streamable()
        .locked("ExposureTimeLocked");
    t.enumeration("ExposureAuto",
                  {"Sets the automatic exposure mode when ExposureMode is Timed.", "自动曝光",
                   "曝光模式为定时曝光时的自动曝光方式。"})
        .entry("Off", 0, "关闭")
        .entry("Once", 1, "一次")
        .entry("Continuous", 2, "连续")
        .in(Bits("ExposureWord", 8, 2, 0));
    t.floating("ExposureAutoLowerLimit",
               {"Smallest exposure time that the automatic exposure may set.", "自动曝光下限",
                "自动曝光允许设置的最小曝光时间。"})
        .in(Real(4, 20.0).littleEndian())
        .range("20", "10000")
        .unit("us")
        .custom()
        .expert();
    t.floating("ExposureAutoUpperLimit",
               {"Largest exposure time that the automatic exposure may set.", "自动曝光上限",
                "自动曝光允许设置的最大曝光时间。"})
        .in(Real(4, 100000.0).littleEndian())
        .range("10000", "10000000")
        .unit("us")
        .custom()
        .expert();
    t.integer("Brightness",
              {"Mean grey value that automatic exposure and automatic gain aim at.", "目标亮度",
               "自动曝光与自动增益所追求的平均灰度值。"})
        .in(Int(1, 128))
        .range("0", "255", "1")
        .shownAs("Linear")
        .custom();
}

} // namespace

void addAcquisitionRows(FeatureTable &table)
{
    table.category("AcquisitionControl",
                   {"Features of the acquisition of images.", "采集控制", "控制图像采集的特征。"},
                   0x12000);
    addAcquisition(table);
    addTrigger(table);
    addExposure(table);
}
