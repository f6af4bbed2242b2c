#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

namespace {

void addGain(FeatureTable &t)
{
    t.enumeration("GainSelector",
                  {"Selects which gain is controlled.", "增益选择", "选择要控制的增益。"})
        .entry("AnalogAll", 0, "全部模拟增益")
        .entry("DigitalAll", 1, "全部数字增益")
        .in(Int(4, 0));
    t.intSwissKnife("GainLocked", "AUTO = 2", {{"AUTO", "GainAutoReg"}});
    t.floating("Gain",
               {"Selected gain as an absolute physical value.", "增益", "所选增益的绝对物理值。"})
        .in(Real(4, 6.5).numbers({6.5, 0.0}).indexedBy("GainSelector", 2))
        .range("0", "24")
        .unit("dB")
        .shownAs("Linear")
        .locked("GainLocked")
        .selectedBy("GainSelector");
    t.enumeration("GainAuto",
                  {"Sets the automatic gain control mode.", "自动增益", "设置自动增益控制方式。"})
        .entry("Off", 0, "关闭")
        .entry("Once", 1, "一次")
        .entry("Continuous", 2, "连续")
        .in(Bits("AnalogAutoWord", 0, 2, 0));
    t.floating("GainAutoLowerLimit",
               {"Smallest gain that the automatic gain control may set.", "自动增益下限",
                "自动增益允许设置的最小增益。"})
        .in(Real(4, 0.0))
        .range("0", "12")
        .unit("dB")
        .custom()
        .expert();
    t.floating("GainAutoUpperLimit",
               {"Largest gain that the automatic gain control may set.", "自动增益上限",
                "自动增益允许设置的最大增益。"})
        .in(Real(4, 18.0))
        .range("12", "24")
        .unit("dB")
        .custom()
        .expert();
    t.boolean("DigitalShiftEnable",
              {"Controls whether the digital shift is applied.", "数字移位使能",
               "控制是否启用数字移位。"})
        .in(Bits("AnalogAutoWord", 16, 1, 0))
        .custom()
        .expert();
    t.intSwissKnife("DigitalShiftOff", "ENABLE = 0", {{"ENABLE", "DigitalShiftEnableReg"}});
    t.integer("DigitalShift",
              {"Number of bits by which the grey values are shifted. A negative number darkens the "
               "image.",
               "数字移位", "灰度值移位的位数，负数使图像变暗。"})
        .in(Int(1, -1).signedValue())
        .range("-4", "4", "1")
        .shownAs("Linear")
        .custom()
        .expert()
        .locked("DigitalShiftOff");
}

void addLevels(FeatureTable &t)
{
    t.enumeration(
         "BlackLevelSelector",
         {"Selects which black level is controlled.", "黑电平选择", "选择要控制的黑电平。"})
        .entry("All", 0, "全部")
        .entry("Tap1", 1, "通道1")
        .entry("Tap2", 2, "通道2")
        .expert()
        .in(Int(4, 0));
    t.registerNode(
        "BlackLevelRaw",
        Int(2, -24).values({-24, 8, 16}).signedValue().indexedBy("BlackLevelSelector", 3));
    t.converter("BlackLevelConverter", "FROM * 8", "TO / 8.0", "BlackLevelRaw");
    t.floating("BlackLevel",
               {"Selected black level as an offset in grey values.", "黑电平",
                "所选黑电平，以灰度值偏移表示。"})
        .from("BlackLevelConverter")
        .range("-64", "64")
        .unit("DN")
        .shownAs("Linear")
        .streamable()
        .expert()
        .selectedBy("BlackLevelSelector");
    t.enumeration("BlackLevelAuto",
                  {"Controls the mode for automatic black level adjustment.", "自动黑电平",
                   "设置黑电平自动调整的方式。"})
        .entry("Off", 0, "关闭")
        .entry("Once", 1, "一次")
        .entry("Continuous", 2, "连续")
        .expert()
        .in(Bits("AnalogAutoWord", 4, 2, 2));
    t.floating("WhiteClip",
               {"Maximal intensity that is output by the sensor before it is clipped.",
                "白电平限幅", "传感器输出被限幅之前的最大亮度。"})
        .in(Real(4, 4095.0))
        .range("0", "4095")
        .expert();
    t.enumeration("BalanceRatioSelector",
                  {"Selects which balance ratio is controlled.", "白平衡通道选择",
                   "选择要控制的白平衡通道。"})
        .entry("Red", 0, "红")
        .entry("Green", 1, "绿")
        .entry("Blue", 2, "蓝")
        .implemented("ColorSensorFitted")
        .in(Int(4, 0));
    t.floating("BalanceRatio",
               {"Ratio of the selected colour component to a reference component.", "白平衡系数",
                "所选颜色分量相对于参考分量的比例。"})
        .in(Real(4, 1.0).indexedBy("BalanceRatioSelector", 3))
        .range("0.25", "4")
        .implemented("ColorSensorFitted")
        .selectedBy("BalanceRatioSelector");
}

void addCurve(FeatureTable &t)
{
    t.boolean("GammaEnable",
              {"Controls whether the gamma correction is applied.", "伽马使能",
               "控制是否启用伽马校正。"})
        .in(Bits("CurveWord", 0, 1, 1))
        .custom();
    t.intSwissKnife("GammaOff", "ENABLE = 0", {{"ENABLE", "GammaEnableReg"}});
    t.floating(
         "Gamma",
         {"Controls the gamma correction of pixel intensity.", "伽马", "控制像素亮度的伽马校正。"})
        .in(Real(8, 0.7))
        .range("0.1", "4")
        .shownAs("Linear")
        .locked("GammaOff");
    t.boolean("SharpnessEnable",
              {"Controls whether the sharpness filter is applied.", "锐度使能",
               "控制是否启用锐化滤波。"})
        .in(Bits("CurveWord", 4, 1, 0))
        .numbers("0", "1") // the register bit means bypass
        .custom();
    t.integer("Sharpness", {"Strength of the sharpness filter.", "锐度", "锐化滤波的强度。"})
        .in(Int(1, 12))
        .range("0", "100", "1")
        .shownAs("Linear")
        .available("SharpnessOn")
        .custom();
    t.intSwissKnife("SharpnessOn", "BYPASS = 0", {{"BYPASS", "SharpnessEnableReg"}});
    t.boolean(
         "NoiseReductionEnable",
         {"Controls whether the noise reduction is applied.", "降噪使能", "控制是否启用降噪。"})
        .in(Bits("CurveWord", 5, 1, 0))
        .custom()
        .expert();
    t.floating("NoiseReduction",
               {"Strength of the noise reduction.", "降噪强度", "降噪处理的强度。"})
        .in(Real(4, 0.35).littleEndian())
        .range("0", "1")
        .shownAs("Linear")
        .custom()
        .expert();
}

} // namespace

void addAnalogRows(FeatureTable &table)
{
    table.category("AnalogControl",
                   {"Features of the analog and digital processing of the sensor's signal.",
                    "模拟控制", "控制传感器信号模拟与数字处理的特征。"},
                   0x13000);
    addGain(table);
    addLevels(table);
    addCurve(table);
    table.category("BasicControl",
                   {"The features that are needed most often, gathered from other categories.",
                    "常用控制", "从其他类别中汇集的最常用特征。"},
                   0x13800);
    table.alsoIn("BasicControl", "ExposureTime");
    table.alsoIn("BasicControl", "Gain");
}
