#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

/// A measure of print quality: the value of the last code, and the least value of each grade.
struct QualityRow
{
    const char *name;
    const char *measure;
    const char *nameCn;
    const char *available;
    int last; ///< percent
    int gradeA;
    int gradeB;
    int gradeC;
    int gradeD;
};

const QualityRow kQualities[] = {
    {"SymbolContrast", "contrast of the symbol", "符号对比度", "Quality1D_Ava", 72, 70, 55, 40, 20},
    {"MinimumReflectance", "least reflectance", "最小反射率", "Quality1D_Ava", 12, 50, 50, 50, 50},
    {"MinimumEdgeContrast", "least contrast of an edge", "最小边缘对比度", "Quality1D_Ava", 31, 15,
     15, 15, 15},
    {"Modulation", "modulation", "调制比", "Quality1D_Ava", 64, 70, 60, 50, 40},
    {"Decodability", "decodability", "可译码度", "Quality1D_Ava", 58, 62, 50, 37, 25},
    {"Defects", "defects", "缺陷度", "Quality1D_Ava", 9, 15, 20, 25, 30},
    {"TDCRSymbolContrast", "contrast of the two-dimensional symbol", "二维符号对比度",
     "QualityTDCR_Ava", 76, 70, 55, 40, 20},
    {"TDCRModulation", "modulation of the two-dimensional symbol", "二维调制比", "QualityTDCR_Ava",
     61, 50, 40, 30, 20},
    {"TDCRAxialNonuniformity", "axial non-uniformity", "轴向不一致性", "QualityTDCR_Ava", 4, 6, 8,
     10, 12},
    {"TDCRGridNonuniformity", "grid non-uniformity", "网格不一致性", "QualityTDCR_Ava", 22, 38, 50,
     63, 75},
    {"TDCRUnusedErrorCorrection", "unused error correction", "未使用纠错", "QualityTDCR_Ava", 88,
     62, 50, 37, 25},
    {"TDCRPrintGrowth", "growth of the print", "打印伸缩", "QualityTDCR_Ava", 33, 50, 70, 85, 100},
};

void addMeasure(FeatureTable &t, const QualityRow &row)
{
    const QByteArray description =
        QByteArray("The ") + row.measure + " of the last code that was graded, in percent.";
    const QByteArray descriptionCn =
        QByteArray("最近一个评级条码的") + row.nameCn + "，单位为百分比。";
    t.integer(row.name, {description.constData(), row.nameCn, descriptionCn.constData()})
        .in(Int(4, row.last).readOnly().moving(1000))
        .unit("%")
        .available(row.available)
        .custom()
        .guru();
    const QPair<const char *, int> grades[] = {
        {"A", row.gradeA}, {"B", row.gradeB}, {"C", row.gradeC}, {"D", row.gradeD}};
    for (const auto &grade : grades) {
        const QByteArray name = QByteArray(row.name) + grade.first;
        const QByteArray limit = QByteArray("Bound of grade ") + grade.first + " for the "
            + row.measure + ", in percent.";
        const QByteArray nameCn = QByteArray(row.nameCn) + grade.first + "级";
        const QByteArray limitCn =
            QByteArray(row.nameCn) + grade.first + "级的界限，单位为百分比。";
        t.integer(name.constData(), {limit.constData(), nameCn.constData(), limitCn.constData()})
            .in(Int(4, grade.second).readOnly())
            .unit("%")
            .available(row.available)
            .custom()
            .guru();
    }
}

} // namespace

QVector<QByteArray> readerQualityRegisters()
{
    QVector<QByteArray> names;
    for (const QualityRow &row : kQualities) {
        names.append(QByteArray(row.name) + "Reg");
    }
    return names;
}

void addReaderQualityRows(FeatureTable &table)
{
    table.category(
        "QualityControl",
        {"Features of the grading of printed codes.", "打码评级", "对印刷条码进行评级的特征。"},
        0x1D000);
    const QVector<SwitchRow> switches = {
        {"Quality1DEnable",
         {"Grades bar codes. The grading takes time.", "一维码评级使能",
          "对一维码进行评级，会增加耗时。"},
         1},
        {"QualityEnable",
         {"Grades two-dimensional codes. The grading takes time.", "二维码评级使能",
          "对二维码进行评级，会增加耗时。"},
         1},
    };
    addRows(table, switches);
    const QVector<NumberRow> numbers = {
        {"Quality1DEnable_Inq",
         {"Tells whether the device can grade codes, 1 when it can.", "评级功能支持",
          "指示设备是否支持评级功能，1表示支持。"},
         1,
         "0",
         "1",
         "",
         RowOptions().readOnly().guru()},
    };
    addRows(table, numbers);
    table.intSwissKnife("Quality1D_Ava", "ENABLE <> 0", {{"ENABLE", "Quality1DEnableReg"}});
    table.intSwissKnife("QualityTDCR_Ava", "ENABLE <> 0", {{"ENABLE", "QualityEnableReg"}});
    table.intSwissKnife("Quality2D_Ava", "ENABLE <> 0", {{"ENABLE", "QualityEnableReg"}});
    table.intSwissKnife("QualityEnable_Ava", "(ONE <> 0) || (TWO <> 0)",
                        {{"ONE", "Quality1DEnableReg"}, {"TWO", "QualityEnableReg"}});
    table.intSwissKnife("OnlyType2_Ava", "BOARD = 2", {{"BOARD", "BoardDeviceTypeReg"}});
    const QVector<ChoiceRow> choices = {
        {"QualityStandard",
         {"Standard by which two-dimensional codes are graded.", "二维码评级标准",
          "二维码评级所依据的标准。"},
         {{"Iso15415", 0, "ISO 15415标准"}, {"Iso29158", 1, "ISO 29158标准"}},
         0,
         RowOptions().available("Quality2D_Ava")},
        {"QualityDisplay",
         {"What of the grading is shown with a result.", "评级显示", "随结果显示的评级内容。"},
         {{"GradeOnly", 0, "仅等级"}, {"AllMeasures", 1, "全部指标"}},
         0,
         RowOptions().available("QualityEnable_Ava")},
        {"QualityReport",
         {"Report on the grading that this type of board writes.", "评级报告",
          "该类型主板输出的评级报告。"},
         {{"Off", 0, "关闭"}, {"Text", 1, "文本"}},
         0,
         RowOptions().implemented("OnlyType2_Ava")},
    };
    addRows(table, choices);
    for (const QualityRow &row : kQualities) {
        addMeasure(table, row);
    }
}
