#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

constexpr int kPollingSelections = kPollingParams * kPollingLights;

/// A value of its own in each set of parameters.
RowOptions ofSet()
{
    return RowOptions().offsetBy("PollingParamOffset", kPollingParams).selectedBy("PollingParam");
}

/// Likewise, where a client finds the set by an index rather than an address.
RowOptions ofSetByIndex()
{
    return RowOptions().indexedBy("PollingParam", kPollingParams).selectedBy("PollingParam");
}

void addSelectors(FeatureTable &t)
{
    QVector<EntryRow> sets;
    static const char *const kNames[kPollingParams][2] = {
        {"Param0", "参数0"}, {"Param1", "参数1"}, {"Param2", "参数2"}, {"Param3", "参数3"},
        {"Param4", "参数4"}, {"Param5", "参数5"}, {"Param6", "参数6"}, {"Param7", "参数7"},
    };
    for (int set = 0; set < kPollingParams; ++set) {
        sets.append({kNames[set][0], set, kNames[set][1]});
    }
    const QVector<ChoiceRow> choices = {
        {"PollingEnable",
         {"How the device goes through the sets of parameters. While it does, the light belongs to "
          "the sets.",
          "轮询使能", "设备轮流使用各组参数的方式，轮询时光源由各组参数决定。"},
         {{"Off", 0, "关闭"},
          {"InTurn", 1, "依次"},
          {"Fixed", 2, "固定"},
          {"BestFirst", 3, "优先最佳"}},
         0},
        {"PollingTarget",
         {"What ends the way through the sets of parameters.", "轮询目标", "结束轮询的条件。"},
         {{"FirstCode", 0, "读到首码"}, {"AllCodes", 1, "读到全部"}, {"Never", 2, "不结束"}},
         0},
        {"PollingParam",
         {"Selects the set of parameters that the other settings refer to.", "轮询参数选择",
          "选择其他参数所针对的轮询参数组。"},
         sets,
         0,
         RowOptions().transient()},
        {"PollingLightSelector",
         {"Selects the segment of the light of the set.", "轮询光源选择",
          "选择该组参数的光源分区。"},
         {{"Left", 0, "左"}, {"Up", 1, "上"}, {"Right", 2, "右"}, {"Down", 3, "下"}},
         0,
         RowOptions().transient()},
        {"PollingIOSelector",
         {"Selects the output line of the set.", "轮询IO选择", "选择该组参数的输出线。"},
         {{"Line0", 0, "线路0"},
          {"Line1", 1, "线路1"},
          {"Line2", 2, "线路2"},
          {"Line3", 3, "线路3"}},
         0,
         RowOptions().transient()},
    };
    addRows(t, choices);
    t.intSwissKnife("PollingParamOffset", "SET * 4", {{"SET", "PollingParamReg"}});
    t.intSwissKnife("PollingNameOffset", "SET * 32", {{"SET", "PollingParamReg"}});
    t.intSwissKnife("PollingLightOffset", "(SET * 4 + SEL) * 4",
                    {{"SET", "PollingParamReg"}, {"SEL", "PollingLightSelectorReg"}});
    t.intSwissKnife("PollingIOOffset", "(SET * 4 + SEL) * 4",
                    {{"SET", "PollingParamReg"}, {"SEL", "PollingIOSelectorReg"}});
}

void addSets(FeatureTable &t)
{
    const QVector<StringRow> strings = {
        {"PollingParamName",
         {"Name that the user gives to the set of parameters.", "参数组名称",
          "用户为该组参数设定的名称。"},
         32,
         "Set",
         RowOptions().offsetBy("PollingNameOffset", kPollingParams).selectedBy("PollingParam")},
    };
    addRows(t, strings);
    const QVector<SwitchRow> switches = {
        {"PollingParamEnable",
         {"Uses the set of parameters in turn.", "参数组使能", "轮询时使用该组参数。"},
         1,
         ofSet()},
        {"PollingFocusEnable",
         {"Moves the focus for the set.", "轮询对焦使能", "使用该组参数时移动焦距。"},
         0,
         ofSet()},
        {"PollingLightEnable",
         {"Switches the selected segment of the light for the set.", "轮询光源使能",
          "控制该组参数所选光源分区的开关。"},
         1,
         RowOptions()
             .offsetBy("PollingLightOffset", kPollingSelections)
             .selectedBy("PollingParam")
             .selectedBy("PollingLightSelector")},
    };
    addRows(t, switches);
    const QVector<RealRow> reals = {
        {"PollingExposureTime",
         {"Exposure time of the set.", "轮询曝光时间", "该组参数的曝光时间。"},
         800,
         "16",
         "100000",
         "us",
         ofSet()},
        {"PollingGain",
         {"Gain of the set.", "轮询增益", "该组参数的增益。"},
         6,
         "0",
         "16",
         "dB",
         ofSet()},
        {"PollingGamma",
         {"Gamma of the set.", "轮询伽马", "该组参数的伽马。"},
         0.7,
         "0.1",
         "4",
         "",
         ofSetByIndex()},
    };
    addRows(t, reals);
    const QVector<ChoiceRow> choices = {
        {"PollingLensType",
         {"Lens that the set uses.", "轮询镜头类型", "该组参数所用的镜头。"},
         {{"Mechanical", 0, "机械镜头"}, {"Liquid", 1, "液态镜头"}},
         1,
         ofSet()},
        {"PollingIOAction",
         {"What the selected output line does for the set.", "轮询IO动作",
          "该组参数所选输出线的动作。"},
         {{"None", 0, "无"}, {"Pulse", 1, "脉冲"}, {"High", 2, "高电平"}},
         0,
         RowOptions()
             .offsetBy("PollingIOOffset", kPollingSelections)
             .selectedBy("PollingParam")
             .selectedBy("PollingIOSelector")},
    };
    addRows(t, choices);
    const QVector<NumberRow> numbers = {
        {"PollingFocusPos",
         {"Position of the focus for the set.", "轮询焦距位置", "该组参数的焦距位置。"},
         420,
         "0",
         "1000",
         "",
         ofSet()},
        {"PollingSingleParamTimeout",
         {"Time after which the next set is taken.", "单组参数超时", "切换到下一组参数的时间。"},
         100,
         "10",
         "10000",
         "ms",
         ofSet()},
        {"PollingSingleParamCodeNum",
         {"Number of codes after which the next set is taken.", "单组参数条码数",
          "切换到下一组参数所需的条码数。"},
         1,
         "1",
         "200",
         "",
         ofSet()},
        {"PollingSingleParamPeriod",
         {"Number of images that are taken with the set.", "单组参数周期",
          "使用该组参数采集的图像数。"},
         1,
         "1",
         "100",
         "",
         ofSet()},
        {"PollingAlgoROIRegion",
         {"Regions in which codes are looked for, one bit for each.", "轮询读码区域",
          "进行读码的区域，每个区域占一位。"},
         1,
         "0",
         "255",
         "",
         ofSet()},
        {"PollingAlgoROIRegionIndex",
         {"Number of the region that the set refers to.", "轮询区域序号",
          "该组参数所针对的区域序号。"},
         0,
         "0",
         "7",
         "",
         ofSet()},
        {"PollingVertline",
         {"Distance of the lines along which codes are looked for, in pixels.", "轮询线间距",
          "搜索条码所沿直线的间距，单位为像素。"},
         8,
         "1",
         "64",
         "",
         ofSetByIndex()},
        {"PollingParamChgTime",
         {"Time of the last change of the set, in seconds since the beginning of 1970.",
          "参数更改时间", "该组参数最近一次更改的时间，以1970年起的秒数表示。"},
         1704067200,
         "0",
         "4294967295",
         "s",
         ofSet().shownAs("PureNumber").expert()},
    };
    addRows(t, numbers);
}

} // namespace

void addReaderPollingRows(FeatureTable &table)
{
    table.category("PollingControl",
                   {"Features of the sets of parameters that the device uses in turn.", "轮询控制",
                    "控制设备轮流使用的各组参数的特征。"},
                   0x21000);
    addSelectors(table);
    addSets(table);
}
