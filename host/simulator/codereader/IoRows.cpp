#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

void addLines(FeatureTable &t)
{
    const QVector<EntryRow> lineConfig = {
        {"Input", 0, "输入"}, {"Output", 1, "输出"}, {"Differential", 2, "差分"}};
    const QVector<ChoiceRow> choices = {
        {"LineSelector",
         {"Selects the physical line of the connector to configure.", "线路选择",
          "选择要配置的物理线路。"},
         {{"Line0", 0, "线路0"}, {"Line1", 1, "线路1"}, {"Line2", 2, "线路2"}},
         0,
         RowOptions().standard().transient()},
        {"LineConfig0",
         {"Wiring of line 0. It is set by a switch on the device.", "线路0配置",
          "线路0的接线方式，由设备上的拨码开关设定。"},
         lineConfig,
         0,
         RowOptions().expert()},
        {"LineConfig1",
         {"Wiring of line 1. It is fixed while images are taken.", "线路1配置",
          "线路1的接线方式，采集期间不可更改。"},
         lineConfig,
         1,
         RowOptions().expert()},
        {"LineSource",
         {"Selects which internal signal is output on the selected line.", "线路信号源",
          "选择在所选线路上输出的内部信号。"},
         {{"Off", 0, "关闭"},
          {"ReadingOk", 1, "读码成功"},
          {"ReadingFailed", 2, "读码失败"},
          {"ContrastLow", 3, "对比度低", {"ContrastWatched"}},
          {"LineTriggerSoftware", 4, "软触发输出"}},
         1,
         RowOptions().standard().offsetBy("LineOffset", 3).selectedBy("LineSelector")},
    };
    addRows(t, choices);
    t.intSwissKnife("LineOffset", "SEL * 4", {{"SEL", "LineSelectorReg"}});
    t.intSwissKnife("ContrastWatched", "ENABLE = 1", {{"ENABLE", "ContrastEnableReg"}});
    const QVector<NumberRow> numbers = {
        {"LineStatusAll",
         {"Returns the current status of all lines, one bit for each line.", "全部线路状态",
          "返回全部线路的当前状态，每条线路占一位。"},
         1,
         "",
         "",
         "",
         RowOptions().standard().readOnly().moving(500).shownAs("HexNumber").expert()},
        {"LineDebouncerTime",
         {"Minimum time that the signal of an input has to hold to be accepted.", "线路消抖时间",
          "输入信号被接受所需保持的最短时间。"},
         50,
         "0",
         "1000000",
         "us",
         RowOptions().standard()},
    };
    addRows(t, numbers);
}

void addStrobe(FeatureTable &t)
{
    t.category("StrobeControl",
               {"Features of the output pulse and of the flash.", "频闪控制",
                "控制输出脉冲与闪光的特征。"},
               0x15400, "DigitalIOControl");
    const QVector<NumberRow> numbers = {
        {"StrobeLineExposeDelay",
         {"Delay of the output pulse behind the start of the exposure.", "输出延迟",
          "输出脉冲相对曝光开始的延迟。"},
         0,
         "0",
         "10000",
         "us"},
        {"StrobeLineExposeDuration",
         {"Length of the output pulse.", "输出持续时间", "输出脉冲的持续时间。"},
         500,
         "0",
         "1000000",
         "us"},
        {"StrobeLinePreDelay",
         {"Time by which the output pulse begins ahead of the exposure.", "输出提前时间",
          "输出脉冲相对曝光开始的提前时间。"},
         0,
         "0",
         "5000",
         "us"},
        {"FlashTime",
         {"Length of the flash.", "闪光时间", "闪光的持续时间。"},
         300,
         "10",
         "20000",
         "us",
         RowOptions().available("FlashOn")},
        {"FlashDelay",
         {"Delay of the flash behind the start of the exposure.", "闪光延迟",
          "闪光相对曝光开始的延迟。"},
         0,
         "0",
         "20000",
         "us",
         RowOptions().available("FlashOn")},
        {"PrechargeTime",
         {"Time for which the flash is charged ahead of the exposure.", "闪光预充时间",
          "曝光前为闪光充电的时间。"},
         100,
         "0",
         "5000",
         "us",
         RowOptions().available("FlashOn")},
    };
    addRows(t, numbers);
    const QVector<SwitchRow> switches = {
        {"FlashEnable",
         {"Flashes the light with each image.", "闪光使能", "每幅图像采集时闪光。"},
         1},
    };
    addRows(t, switches);
    const QVector<ChoiceRow> choices = {
        {"FlashMode",
         {"How the light works. While polling is on it belongs to the polling parameters.",
          "闪光模式", "光源的工作方式，轮询开启时由轮询参数决定。"},
         {{"Strobe", 0, "频闪"}, {"Constant", 1, "常亮"}, {"Alternating", 2, "交替"}},
         0},
    };
    addRows(t, choices);
    t.intSwissKnife("FlashOn", "ENABLE = 1", {{"ENABLE", "FlashEnableReg"}});
}

void addStatistics(FeatureTable &t)
{
    t.category("StatisticsControl",
               {"Counters of the readings since the last reset.", "读码统计",
                "自上次清零以来的读码计数。"},
               0x16000);
    const QVector<NumberRow> numbers = {
        {"ReadCount",
         {"Number of images with a code.", "读到条码数", "读到条码的图像数量。"},
         0,
         "",
         "",
         "",
         RowOptions().readOnly().moving(120).shownAs("PureNumber")},
        {"NoReadCount",
         {"Number of images without a code.", "未读到条码数", "未读到条码的图像数量。"},
         0,
         "",
         "",
         "",
         RowOptions().readOnly().moving(125).shownAs("PureNumber")},
        {"FrameCount",
         {"Number of images that were taken.", "图像计数", "已采集的图像数量。"},
         0,
         "",
         "",
         "",
         RowOptions().readOnly().moving(100).shownAs("PureNumber")},
        {"DecodeTime",
         {"Time that the last reading took.", "解码耗时", "最近一次读码所用的时间。"},
         0,
         "",
         "",
         "ms",
         RowOptions().readOnly().moving(500)},
    };
    addRows(t, numbers);
    t.swissKnife("ReadRateFormula", "(GOOD + BAD = 0) ? 0 : (100.0 * GOOD / (GOOD + BAD))",
                 {{"GOOD", "ReadCountReg"}, {"BAD", "NoReadCountReg"}});
    t.floating("ReadRate",
               {"Share of the images that had a code, in percent.", "读码率",
                "读到条码的图像所占的百分比。"})
        .from("ReadRateFormula")
        .range("0", "100")
        .unit("%")
        .custom();
    const QVector<CommandRow> commands = {
        {"StatisticsReset",
         {"Sets the counters of the readings to 0.", "统计清零", "将读码计数清零。"}},
    };
    addRows(t, commands);
}

} // namespace

void addReaderIoRows(FeatureTable &table)
{
    table.category(
        "DigitalIOControl",
        {"Features of the input and output lines.", "数字IO控制", "控制输入输出线的特征。"},
        0x15000);
    addLines(table);
    addStrobe(table);
    addStatistics(table);
}
