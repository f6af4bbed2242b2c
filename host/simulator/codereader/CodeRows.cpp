#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

void addTypes(FeatureTable &t)
{
    t.category("ReadSetting",
               {"The types of code that are looked for.", "码制设置", "设置要识别的条码类型。"},
               0x17400, "CodeReadingControl");
    // Pharmacode looks like parts of other bar codes, so the two kinds put each other out.
    const QVector<SwitchRow> rows = {
        {"DMCode", {"Looks for Data Matrix codes.", "DM码", "识别Data Matrix码。"}, 1},
        {"QRCode", {"Looks for QR codes.", "QR码", "识别QR码。"}, 1},
        {"Code128",
         {"Looks for Code 128.", "Code 128码", "识别Code 128码。"},
         1,
         RowOptions().invalidatedBy("PHARMACODE").invalidatedBy("PHARMACODE2d")},
        {"Code39",
         {"Looks for Code 39.", "Code 39码", "识别Code 39码。"},
         1,
         RowOptions().invalidatedBy("PHARMACODE").invalidatedBy("PHARMACODE2d")},
        {"EAN13",
         {"Looks for EAN 13.", "EAN 13码", "识别EAN 13码。"},
         0,
         RowOptions().invalidatedBy("PHARMACODE").invalidatedBy("PHARMACODE2d")},
        {"PHARMACODE",
         {"Looks for Pharmacode with one track. Other bar codes are switched off.",
          "Pharmacode单轨码", "识别Pharmacode单轨码，与其他一维码互斥。"},
         0,
         RowOptions().invalidatedBy("Code128").invalidatedBy("Code39").invalidatedBy("EAN13")},
        {"PHARMACODE2d",
         {"Looks for Pharmacode with two tracks. Other bar codes are switched off.",
          "Pharmacode双轨码", "识别Pharmacode双轨码，与其他一维码互斥。"},
         0,
         RowOptions().invalidatedBy("Code128").invalidatedBy("Code39").invalidatedBy("EAN13")},
        {"LDirectionEnable",
         {"Determines the direction of the L shaped side of Data Matrix codes.", "L边方向使能",
          "判断Data Matrix码L边的方向。"},
         0},
    };
    addRows(t, rows);
}

} // namespace

void addReaderCodeRows(FeatureTable &table)
{
    table.category("CodeReadingControl",
                   {"Features of the reading of codes.", "读码控制", "控制读码的特征。"}, 0x17000);
    const QVector<ChoiceRow> choices = {
        {"CodeReadMode",
         {"When codes are looked for.", "读码模式", "何时进行读码。"},
         {{"EachTrigger", 0, "逐次触发"},
          {"Continuous", 1, "连续"},
          {"Presentation", 2, "演示"},
          {"Burst", 3, "连读"}},
         0},
        {"MultiCameraMode",
         {"How several readers work together.", "多相机模式", "多台读码器的协同方式。"},
         {{"Single", 0, "单机"}, {"Group", 1, "组网"}, {"MainSub", 2, "主从"}},
         0},
        {"StationRole",
         {"Role of this reader among several.", "站点角色", "本读码器在多台设备中的角色。"},
         {{"Main", 0, "主站"}, {"Sub", 1, "从站"}},
         0},
    };
    addRows(table, choices);
    table.intSwissKnife("WorksInGroup", "(MODE <> 0) && (ROLE = 1)",
                        {{"MODE", "MultiCameraModeReg"}, {"ROLE", "StationRoleReg"}});
    const QVector<NumberRow> numbers = {
        {"MainStationID",
         {"Number of the main reader that this one sends its results to.", "主站编号",
          "本读码器向其发送结果的主站编号。"},
         1,
         "0",
         "255",
         "",
         RowOptions().available("WorksInGroup")},
        {"NoReadTimeOut",
         {"Time after which a reading without a code is given up.", "未读到超时",
          "未读到条码时放弃读码的时间。"},
         300,
         "10",
         "30000",
         "ms"},
        {"NoReadImgIndex",
         {"Which image of a trigger is kept when no code was read, counted from 1.",
          "未读到图像序号", "未读到条码时保留的图像序号，从1开始。"},
         1,
         "1",
         "10",
         ""},
    };
    addRows(table, numbers);
    addTypes(table);
}
