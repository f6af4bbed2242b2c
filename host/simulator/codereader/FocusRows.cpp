#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

void addTuning(FeatureTable &t)
{
    t.category(
        "TuningControl",
        {"Features that find good settings by themselves.", "自动调参", "自动寻找合适参数的特征。"},
        0x1F800);
    const QVector<CommandRow> commands = {
        {"SmartTune",
         {"Starts a search for good exposure, light and focus.", "智能调参",
          "开始自动寻找合适的曝光、光源与焦距。"}},
        {"SmartTuneStop",
         {"Ends the search for good settings early.", "停止智能调参", "提前结束自动寻找参数。"}},
        {"SelfAdaptParamAdjustStart",
         {"Starts a search for a good exposure alone.", "自适应调参", "开始自动寻找合适的曝光。"}},
    };
    addRows(t, commands);
    const QVector<NumberRow> numbers = {
        {"SmartTuneProgress",
         {"How far the search for good settings has come.", "调参进度", "自动寻找参数的进度。"},
         0,
         "0",
         "100",
         "%",
         RowOptions().readOnly().moving(300)},
    };
    addRows(t, numbers);
}

} // namespace

void addReaderFocusRows(FeatureTable &table)
{
    table.category("FocusControl", {"Features of the lens.", "焦距控制", "控制镜头的特征。"},
                   0x1F000);
    const QVector<ChoiceRow> choices = {
        {"FocusOptSelect",
         {"Selects the lens that the settings of the focus refer to.", "镜头选择",
          "选择焦距参数所针对的镜头。"},
         {{"Mechanical", 0, "机械镜头"}, {"Liquid", 1, "液态镜头"}},
         1},
    };
    addRows(table, choices);
    const QVector<CommandRow> commands = {
        {"FocusMode", {"Starts the automatic focus.", "自动对焦", "开始自动对焦。"}},
        {"FocusStepPlus",
         {"Moves the focus away from the device by one step.", "焦距增加",
          "将焦距向远处移动一步。"}},
        {"FocusStepMinus",
         {"Moves the focus towards the device by one step.", "焦距减小", "将焦距向近处移动一步。"}},
    };
    addRows(table, commands);
    const QVector<NumberRow> numbers = {
        {"AutoFocusStat",
         {"State of the automatic focus, 1 when it is ready and 0 while it runs.", "自动对焦状态",
          "自动对焦的状态，1表示就绪，0表示正在进行。"},
         1,
         "0",
         "1",
         "",
         RowOptions().readOnly().moving(300)},
        {"FocusStep",
         {"Size of one step of the focus.", "对焦步长", "焦距每移动一步的大小。"},
         10,
         "1",
         "200",
         ""},
        {"FocusPosition",
         {"Present position of the focus.", "焦距位置", "焦距的当前位置。"},
         420,
         "0",
         "1000",
         "",
         RowOptions()
             .invalidatedBy("FocusStepPlus")
             .invalidatedBy("FocusStepMinus")
             .invalidatedBy("FocusMode")},
    };
    addRows(table, numbers);
    addTuning(table);
}
