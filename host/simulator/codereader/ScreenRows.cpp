#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

void addStorage(FeatureTable &t)
{
    t.category("StorageControl",
               {"Features of the pictures that are kept in the device.", "本地存储",
                "控制设备内保存图像的特征。"},
               0x29000, "Root", "Expert");
    const QVector<StringRow> strings = {
        {"EMMCStateShowStr",
         {"State of the memory for pictures, as a text.", "存储状态", "图像存储器状态的文字说明。"},
         32,
         "ready",
         RowOptions().readOnly().expert()},
        {"EMMCStateJpegShowStr",
         {"State of the memory for compressed pictures, as a text.", "压缩图存储状态",
          "压缩图像存储器状态的文字说明。"},
         32,
         "ready",
         RowOptions().readOnly().expert()},
    };
    addRows(t, strings);
    const QVector<NumberRow> numbers = {
        {"EMMCCloseTime",
         {"Time after which the memory for pictures is closed, in seconds.", "存储关闭时间",
          "图像存储器关闭的时间，单位为秒。"},
         600,
         "0",
         "86400",
         "s",
         RowOptions().expert()},
        {"EMMCCloseTimeShowMin",
         {"Time after which the memory for pictures is closed, in minutes.", "存储关闭分钟数",
          "图像存储器关闭的时间，单位为分钟。"},
         10,
         "0",
         "1440",
         "min",
         RowOptions().expert()},
        {"StorageUsed",
         {"Share of the memory for pictures that is in use.", "存储占用", "图像存储器的占用比例。"},
         17,
         "0",
         "100",
         "%",
         RowOptions().readOnly().moving(2000).expert()},
        {"WAYBILL_JpgQuality",
         {"Quality of the cut-out pictures of waybills.", "面单图像质量", "面单抠图的图像质量。"},
         80,
         "1",
         "100",
         "%",
         RowOptions().available("WaybillOn")},
    };
    addRows(t, numbers);
    const QVector<SwitchRow> switches = {
        {"WAYBILL_Enable",
         {"Cuts pictures of waybills out of the images.", "面单抠图使能", "从图像中抠取面单图像。"},
         0},
    };
    addRows(t, switches);
    const QVector<ChoiceRow> choices = {
        {"WAYBILL_OutputImageType",
         {"Format of the cut-out pictures of waybills.", "面单图像类型", "面单抠图的图像格式。"},
         {{"Jpeg", 0, "压缩"}, {"Bitmap", 1, "位图"}},
         0,
         RowOptions().available("WaybillOn")},
    };
    addRows(t, choices);
    t.intSwissKnife("WaybillOn", "ENABLE <> 0", {{"ENABLE", "WAYBILL_EnableReg"}});
}

} // namespace

void addReaderScreenRows(FeatureTable &table)
{
    table.category(
        "ScreenControl",
        {"Features of the small screen of the device.", "屏幕控制", "控制设备小屏幕的特征。"},
        0x28000);
    const QVector<ChoiceRow> choices = {
        {"ScreenHomepage",
         {"Page that the screen shows while codes are read.", "屏幕主页", "读码时屏幕显示的页面。"},
         {{"CodeScore", 1, "读码评分"},
          {"CodeNumber", 2, "条码数量"},
          {"DecodeTime", 3, "解码耗时"}},
         1},
        {"ScreenLanguage",
         {"Language of the screen.", "屏幕语言", "屏幕显示的语言。"},
         {{"Chinese", 0, "中文"}, {"English", 1, "英文"}},
         1,
         RowOptions().invalidatedBy("Language")},
    };
    addRows(table, choices);
    const QVector<NumberRow> numbers = {
        {"ScreenBrightness",
         {"Brightness of the screen.", "屏幕亮度", "屏幕的亮度。"},
         70,
         "10",
         "100",
         "%",
         RowOptions().shownAs("Linear")},
    };
    addRows(table, numbers);
    addStorage(table);
}
