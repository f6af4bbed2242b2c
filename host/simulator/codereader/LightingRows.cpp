#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

QVector<EntryRow> segmentEntries(const ReaderLight &light)
{
    QVector<EntryRow> entries = {
        {"Left", 0, "左"}, {"Up", 1, "上"}, {"Right", 2, "右"}, {"Down", 3, "下"}};
    if (light.m_nSegments == 3) {
        entries = {{"Up", 0, "上"}, {"Mid", 1, "中"}, {"Down", 2, "下"}};
    } else if (light.m_nSegments == 6) {
        entries = {{"UpLeft", 0, "左上"},    {"UpMid", 1, "中上"},   {"UpRight", 2, "右上"},
                   {"DownRight", 3, "右下"}, {"DownMid", 4, "中下"}, {"DownLeft", 5, "左下"}};
    }
    if (light.m_bAll) {
        entries.append({"All", light.m_nSegments, "全部"});
    }
    if (light.m_bStray) {
        entries.append({"Spare", light.m_nSegments + 1, "备用"});
    }
    return entries;
}

} // namespace

void addReaderLightingRows(FeatureTable &table, const ReaderLight &light)
{
    const int elements = light.m_nSegments + (light.m_bStray ? 2 : 1);
    table.category("LightingControl",
                   {"Features of the light of the reader.", "光源控制", "控制读码器光源的特征。"},
                   0x1E000);
    const QVector<ChoiceRow> choices = {
        {"LightEnable",
         {"Switches the light of the reader.", "光源使能", "控制读码器光源的开关。"},
         {{"Off", 0, "关闭"}, {"On", 1, "开启"}},
         1},
        {"LightingSelector",
         {"Selects the segment of the light that is set.", "光源分区选择",
          "选择要设置的光源分区。"},
         segmentEntries(light),
         1,
         RowOptions().transient()},
    };
    addRows(table, choices);
    table.intSwissKnife("LightingOffset", "SEL * 4", {{"SEL", "LightingSelectorReg"}});
    // One element a segment and one for all of them; the firmware keeps them in step.
    QVector<qint64> enabled(elements, 0);
    for (int segment = 0; segment < light.m_nSegments; ++segment) {
        enabled[segment] = segment != 2;
    }
    table
        .boolean("LightingEnable",
                 {"Switches the selected segment of the light.", "光源分区使能",
                  "控制所选光源分区的开关。"})
        .custom()
        .in(Int(4, 0).values(enabled).offsetBy("LightingOffset", elements))
        .selectedBy("LightingSelector");
    const QVector<SwitchRow> switches = {
        {"AmingLightEnable", {"Switches the aiming light.", "瞄准灯使能", "控制瞄准灯的开关。"}, 1},
        {"LaserEnable", {"Switches the laser pointer.", "激光使能", "控制激光指示的开关。"}, 0},
    };
    addRows(table, switches);
    const QVector<NumberRow> bitmap = {
        {"LightingBitmap",
         {"State of all segments of the light, one bit for each by the number of its entry.",
          "光源分区状态", "全部光源分区的状态，每个分区按其编号占一位。"},
         ((1 << light.m_nSegments) - 1) & ~4,
         "",
         "",
         "",
         RowOptions().readOnly().invalidatedBy("LightingEnable").shownAs("HexNumber").expert()},
    };
    if (light.m_bBitmap) {
        addRows(table, bitmap);
    }
    const QVector<NumberRow> numbers = {
        {"LightingBrightness",
         {"Brightness of the selected segment of the light.", "光源分区亮度",
          "所选光源分区的亮度。"},
         80,
         "0",
         "100",
         "%",
         RowOptions()
             .offsetBy("LightingOffset", elements)
             .selectedBy("LightingSelector")
             .shownAs("Linear")},
        {"LightingTime",
         {"Time for which the selected segment shines with each image.", "光源分区点亮时间",
          "每幅图像所选光源分区点亮的时间。"},
         500,
         "0",
         "20000",
         "us",
         RowOptions().offsetBy("LightingOffset", elements).selectedBy("LightingSelector")},
        {"LightingDelay",
         {"Delay of the selected segment behind the start of the exposure.", "光源分区延迟",
          "所选光源分区相对曝光开始的延迟。"},
         0,
         "0",
         "20000",
         "us",
         RowOptions().offsetBy("LightingOffset", elements).selectedBy("LightingSelector")},
        {"LightingAhead",
         {"Time by which the selected segment shines ahead of the exposure.", "光源分区提前时间",
          "所选光源分区相对曝光提前点亮的时间。"},
         0,
         "0",
         "5000",
         "us",
         RowOptions().offsetBy("LightingOffset", elements).selectedBy("LightingSelector")},
    };
    addRows(table, numbers);
    const QVector<CommandRow> commands = {
        {"LightingAllOn",
         {"Switches all segments of the light on.", "光源全部开启", "开启全部光源分区。"}},
        {"LightingAllOff",
         {"Switches all segments of the light off.", "光源全部关闭", "关闭全部光源分区。"}},
    };
    if (light.m_bCommands) {
        addRows(table, commands);
    }
    table
        .directRegister("LightingSelector_Icon_Inq_Reg",
                        {"Number of the picture that shows the segments of the light.",
                         "光源图标编号", "显示光源分区所用图片的编号。"},
                        Int(4, 0).readOnly())
        .custom()
        .guru();
}
