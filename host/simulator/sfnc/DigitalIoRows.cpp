#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

void addDigitalIoRows(FeatureTable &t)
{
    t.category("DigitalIOControl",
               {"Features of the general purpose input and output lines.", "数字IO控制",
                "控制通用输入输出线的特征。"},
               0x15000, "Root", "Expert");
    t.enumeration("LineSelector",
                  {"Selects the physical line of the connector to configure.", "线路选择",
                   "选择要配置的物理线路。"})
        .entry("Line0", 0, "线路0")
        .entry("Line1", 1, "线路1")
        .entry("Line2", 2, "线路2")
        .expert()
        .in(Int(4, 0));
    t.intSwissKnife("LineBidirectional", "SEL = 2", {{"SEL", "LineSelectorReg"}});
    t.intSwissKnife("LineFixed", "SEL <> 2", {{"SEL", "LineSelectorReg"}});
    t.enumeration("LineMode",
                  {"Controls whether the selected line is used as input or output.", "线路模式",
                   "控制所选线路用作输入还是输出。"})
        .entry("Input", 0, "输入")
        .entry("Output", 1, "输出")
        .expert()
        .locked("LineFixed")
        .in(Int(4, 0).values({0, 1, 0}).indexedBy("LineSelector", 3))
        .selectedBy("LineSelector");
    t.boolean("LineInverter",
              {"Controls the inversion of the signal of the selected line.", "线路反相",
               "控制所选线路信号是否反相。"})
        .in(Int(1, 0).values({0, 1, 0}).indexedBy("LineSelector", 3))
        .expert()
        .selectedBy("LineSelector");
    t.registerNode("LineStatusWord", Int(4, 5).readOnly().moving(500));
    t.intSwissKnife("LineStatusFormula", "(ALL >> SEL) & 1",
                    {{"ALL", "LineStatusWord"}, {"SEL", "LineSelectorReg"}});
    t.boolean("LineStatus",
              {"Returns the current status of the selected line.", "线路状态",
               "返回所选线路的当前状态。"})
        .from("LineStatusFormula")
        .expert()
        .selectedBy("LineSelector");
    t.integer("LineStatusAll",
              {"Returns the current status of all lines, one bit for each line.", "全部线路状态",
               "返回全部线路的当前状态，每条线路占一位。"})
        .from("LineStatusWord")
        .shownAs("HexNumber")
        .expert();
    t.intSwissKnife("LineIsOutput", "MODE = 1", {{"MODE", "LineModeReg"}});
    t.enumeration("LineSource",
                  {"Selects which internal signal is output on the selected line.", "线路信号源",
                   "选择在所选线路上输出的内部信号。"})
        .entry("Off", 0, "关闭")
        .entry("ExposureActive", 1, "曝光有效")
        .entry("FrameTriggerWait", 2, "等待帧触发")
        .entry("Timer0Active", 3, "定时器0有效")
        .entry("UserOutput0", 4, "用户输出0")
        .available("LineIsOutput")
        .expert()
        .in(Int(4, 0).values({0, 1, 0}).indexedBy("LineSelector", 3))
        .selectedBy("LineSelector");
    t.enumeration("LineFormat",
                  {"Electrical format of the selected physical line.", "线路电气格式",
                   "所选物理线路的电气格式。"})
        .entry("NoConnect", 0, "未连接")
        .entry("TTL", 2, "TTL")
        .entry("OptoCoupled", 5, "光耦隔离")
        .expert()
        .in(Int(4, 5).values({5, 5, 2}).readOnly().indexedBy("LineSelector", 3))
        .selectedBy("LineSelector");
    t.intSwissKnife("LineIsInput", "MODE = 0", {{"MODE", "LineModeReg"}});
    t.floating("LineDebouncerTime",
               {"Minimum time that the signal of the selected input has to hold to be accepted.",
                "线路消抖时间", "所选输入信号被接受所需保持的最短时间。"})
        .in(Real(4, 50.0).numbers({50.0, 0.0, 10.0}).indexedBy("LineSelector", 3))
        .range("0", "20000")
        .unit("us")
        .available("LineIsInput")
        .custom()
        .expert()
        .selectedBy("LineSelector");
    t.integer("UserOutputSelector",
              {"Selects which bit of the user output register is set by UserOutputValue.",
               "用户输出选择", "选择用户输出值所设置的输出位。"})
        .value("1")
        .range("0", "3", "1")
        .expert();
    t.registerNode("UserOutputWord", Int(4, 2));
    t.intConverter("UserOutputBit", "(ALL & (15 - (1 << SEL))) | (FROM << SEL)", "(TO >> SEL) & 1",
                   "UserOutputWord", {{"ALL", "UserOutputWord"}, {"SEL", "UserOutputSelector"}});
    t.boolean("UserOutputValue",
              {"Sets the value of the bit selected by UserOutputSelector.", "用户输出值",
               "设置所选用户输出位的值。"})
        .from("UserOutputBit")
        .streamable()
        .expert()
        .selectedBy("UserOutputSelector");
    t.integer("UserOutputValueAll",
              {"Sets the value of all the bits of the user output register.", "全部用户输出值",
               "设置用户输出寄存器全部位的值。"})
        .from("UserOutputWord")
        .range("0", "15", "1")
        .shownAs("HexNumber")
        .streamable()
        .expert();
    t.integer("UserOutputValueAllMask",
              {"Write mask that is applied to UserOutputValueAll.", "用户输出掩码",
               "应用于全部用户输出值的写掩码。"})
        .in(Int(4, 15))
        .range("0", "15", "1")
        .shownAs("HexNumber")
        .expert();
}
