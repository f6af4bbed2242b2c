#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

namespace {

// A gain of 2 bytes in every word, then records of 6 bytes with the black level behind 2 bytes without a meaning.
constexpr quint64 kChannelTable = 0x50100;
constexpr quint64 kBlackLevels = kChannelTable + 16 + 2;
constexpr int kHalfWords = 8 + 13;

void addChannels(FeatureTable &t)
{
    t.integer("ReadoutChannelSelector",
              {"Selects the channel of the readout whose calibration is shown.", "读出通道选择",
               "选择要显示其标定值的读出通道。"})
        .value("0")
        .range("0", "3", "1")
        .custom()
        .expert();
    t.intSwissKnife("ReadoutChannelGainOffset", "SEL * 4", {{"SEL", "ReadoutChannelSelector"}});
    t.integer("ReadoutChannelGain",
              {"Gain of the selected channel, 1024 stands for 1.", "读出通道增益",
               "所选读出通道的增益，1024表示1倍。"})
        .in(Int(2, 0)
                .values({1024, 0, 1019, 0, 1031, 0, 1027, 0})
                .at(kChannelTable)
                .offsetBy("ReadoutChannelGainOffset", kHalfWords))
        .range("0", "4095", "1")
        .custom()
        .expert()
        .selectedBy("ReadoutChannelSelector");
    t.intSwissKnife("ReadoutChannelLevelOffset", "SEL * 6", {{"SEL", "ReadoutChannelSelector"}});
    t.integer("ReadoutChannelBlackLevel",
              {"Black level of the selected channel, in 1/256 of a grey value.", "读出通道黑电平",
               "所选读出通道的黑电平，单位为1/256灰度值。"})
        .in(Int(4, 0)
                .within("ReadoutChannelGainReg")
                .at(kBlackLevels)
                .offsetBy("ReadoutChannelLevelOffset", 1))
        .range("0", "65535", "1")
        .custom()
        .expert()
        .selectedBy("ReadoutChannelSelector");
    t.intSwissKnife("ReadoutChannelDelayOffset", "SEL * 8", {{"SEL", "ReadoutChannelSelector"}});
    t.registerNode("ReadoutChannelDelayRaw",
                   Int(8, 0)
                       .values({0, 1500, 2250, 5125})
                       .littleEndian()
                       .offsetBy("ReadoutChannelDelayOffset", 4));
    t.converter("ReadoutChannelDelayConverter", "FROM * 1000", "RAW / 1000",
                "ReadoutChannelDelayRaw", {{"RAW", "ReadoutChannelDelayRaw"}});
    t.floating("ReadoutChannelDelay",
               {"Time by which the selected channel is read after the first.", "读出通道延迟",
                "所选读出通道相对首个通道的读出延迟。"})
        .from("ReadoutChannelDelayConverter")
        .range("0", "1000")
        .unit("us")
        .streamable()
        .custom()
        .expert()
        .selectedBy("ReadoutChannelSelector");
}

void addTestRamp(FeatureTable &t)
{
    t.enumeration("ReadoutTestMode",
                  {"Controls whether the channels carry a ramp instead of the image.",
                   "读出测试模式", "控制读出通道是否以测试斜坡代替图像。"})
        .entry("Off", 0, "关闭")
        .entry("Ramp", 1, "斜坡")
        .in(Int(4, 0))
        .custom()
        .expert();
    t.intSwissKnife("ReadoutTestOn", "MODE = 1", {{"MODE", "ReadoutTestModeReg"}});
    t.structRegister("ReadoutTestWord", Int(4, 0));
    t.structEntry("ReadoutTestWord", "ReadoutTestStartEntry", 0, 12, 64);
    t.structEntry("ReadoutTestWord", "ReadoutTestStepEntry", 16, 8, 4);
    t.integer("ReadoutTestStart",
              {"Grey value at which the ramp starts.", "斜坡起始值", "测试斜坡起始处的灰度值。"})
        .from("ReadoutTestStartEntry")
        .range("0", "4095", "1")
        .streamable()
        .available("ReadoutTestOn")
        .custom()
        .guru();
    t.integer(
         "ReadoutTestStep",
         {"Difference of the ramp from pixel to pixel.", "斜坡步长", "测试斜坡相邻像素的差值。"})
        .from("ReadoutTestStepEntry")
        .range("0", "255", "1")
        .streamable()
        .available("ReadoutTestOn")
        .custom()
        .guru();
    t.integer("ReadoutTestColumns",
              {"Number of columns after which the ramp starts again.", "斜坡列数",
               "测试斜坡重新开始前的列数。"})
        .in(Int(2, 1024))
        .range("1", "8192", "1")
        .available("ReadoutTestOn")
        .custom()
        .guru();
    t.integer("ReadoutTestSeed",
              {"Seed of the noise that is added to the ramp, a number of 48 bits.", "噪声种子",
               "叠加在测试斜坡上的噪声的种子，为48位数值。"})
        .in(Int(6, 0x1234ABCD5678))
        .range("0", "281474976710655", "1")
        .shownAs("HexNumber")
        .available("ReadoutTestOn")
        .custom()
        .guru();
}

} // namespace

void addReadoutRows(FeatureTable &table)
{
    table.category("ReadoutControl",
                   {"Features of the channels over which the sensor is read out.", "读出控制",
                    "控制传感器各读出通道的特征。"},
                   0x50000, "Root", "Expert");
    addChannels(table);
    addTestRamp(table);
}
