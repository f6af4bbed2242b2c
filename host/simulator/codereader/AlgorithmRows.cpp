#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

constexpr int kRegions =
    2 * kAlgoRegions; ///< those of the main reader, then those of the sub reader

QVector<qint64> regionValues(qint64 first, qint64 step)
{
    QVector<qint64> values;
    for (int region = 0; region < kRegions; ++region) {
        values.append(first + region * step);
    }
    return values;
}

void addFilter(FeatureTable &t)
{
    t.category("ResultFilter",
               {"Features that choose among the codes that were read.", "结果过滤",
                "对读到的条码进行筛选的特征。"},
               0x1B800, "AlgorithmControl");
    const QVector<SwitchRow> switches = {
        {"NumeralFilter",
         {"Drops codes that hold other characters than digits.", "数字过滤",
          "丢弃含非数字字符的条码。"},
         0},
        {"RegularExpressionEnable",
         {"Drops codes that do not match RegularExpressionRules.", "正则过滤使能",
          "丢弃与正则过滤规则不符的条码。"},
         0},
    };
    addRows(t, switches);
    const QVector<StringRow> strings = {
        {"RegularExpressionRules",
         {"Regular expression that codes have to match.", "正则过滤规则",
          "条码须满足的正则表达式。"},
         128,
         "^.{1,64}$"},
    };
    addRows(t, strings);
}

void addRegions(FeatureTable &t)
{
    t.category("AlgorithmRegionControl",
               {"The regions of the image in which codes are looked for.", "读码区域",
                "图像中进行读码的区域。"},
               0x1C000, "AlgorithmControl");
    t.enumeration("AlgoCameraSelector",
                  {"Selects the reader of a group whose regions are set.", "区域相机选择",
                   "选择要设置读码区域的读码器。"})
        .entry("MainReader", 0, "主读码器")
        .entry("SubReader", 1, "从读码器")
        .custom()
        .in(Int(4, 0).transient());
    // The number of the region is the client's own: the device keeps no selection.
    t.integer("AlgoRegionIndex",
              {"Selects the region that the settings of a region refer to.", "区域序号",
               "选择区域参数所针对的读码区域。"})
        .value("0")
        .range("0", "7", "1")
        .custom();
    t.intSwissKnife("AlgoRegionOffset", "(CAMERA * 8 + INDEX) * 4",
                    {{"CAMERA", "AlgoCameraSelectorReg"}, {"INDEX", "AlgoRegionIndex"}});
    t.intSwissKnife("AlgoRegionLimitX", "SENSOR - WIDTH",
                    {{"SENSOR", "SensorWidthReg"}, {"WIDTH", "AlgoRegionWidthReg"}});
    t.intSwissKnife("AlgoRegionLimitY", "SENSOR - HEIGHT",
                    {{"SENSOR", "SensorHeightReg"}, {"HEIGHT", "AlgoRegionHeightReg"}});
    const struct
    {
        const char *name;
        Texts texts;
        QVector<qint64> values;
        const char *min;
        const char *max;
        const char *limit;
    } rows[] = {
        {"AlgoRegionLeftX",
         {"Left edge of the selected region.", "区域左边界", "所选读码区域的左边界。"},
         regionValues(0, 16),
         "0",
         "",
         "AlgoRegionLimitX"},
        {"AlgoRegionLeftY",
         {"Upper edge of the selected region.", "区域上边界", "所选读码区域的上边界。"},
         regionValues(0, 8),
         "0",
         "",
         "AlgoRegionLimitY"},
        {"AlgoRegionWidth",
         {"Width of the selected region.", "区域宽度", "所选读码区域的宽度。"},
         regionValues(320, 0),
         "16",
         "1408",
         ""},
        {"AlgoRegionHeight",
         {"Height of the selected region.", "区域高度", "所选读码区域的高度。"},
         regionValues(240, 16),
         "16",
         "1024",
         ""},
    };
    t.boolean("AlgoRegionEnable",
              {"Looks for codes in the selected region.", "区域使能", "在所选区域内读码。"})
        .custom()
        .in(Int(4, 0).offsetBy("AlgoRegionOffset", kRegions))
        .selectedBy("AlgoRegionIndex")
        .selectedBy("AlgoCameraSelector");
    for (const auto &row : rows) {
        FeatureBuilder feature = t.integer(row.name, row.texts);
        feature.custom()
            .in(Int(4, 0).values(row.values).offsetBy("AlgoRegionOffset", kRegions))
            .range(row.min, row.max, "1")
            .unit("px")
            .selectedBy("AlgoRegionIndex")
            .selectedBy("AlgoCameraSelector");
        if (*row.limit) {
            feature.max(row.limit);
        }
    }
}

} // namespace

void addReaderAlgorithmRows(FeatureTable &table)
{
    table.category("AlgorithmControl",
                   {"Features of the search for codes.", "算法控制", "控制条码搜索的特征。"},
                   0x1B000);
    const QVector<ChoiceRow> choices = {
        {"ArithmeticType",
         {"How the search works. Each way has a limit of codes of its own.", "算法类型",
          "搜索的工作方式，各方式有各自的条码数量上限。"},
         {{"Locate", 1, "定位"}, {"Index", 2, "索引"}, {"Stack", 3, "堆叠"}},
         1},
    };
    addRows(table, choices);
    const QVector<NumberRow> numbers = {
        {"LocBarNum",
         {"Number of codes to look for.", "条码个数", "要查找的条码数量。"},
         4,
         "1",
         "200",
         ""},
        {"IdxLocCodeNum",
         {"Number of codes to look for by index.", "索引条码个数", "按索引查找的条码数量。"},
         2,
         "1",
         "100",
         ""},
        {"StackBarNum",
         {"Number of codes in one stack.", "堆叠条码个数", "一组堆叠中的条码数量。"},
         3,
         "1",
         "50",
         ""},
        {"DecodeTimeout",
         {"Time that the search in one image may take.", "解码超时", "单幅图像搜索允许的时间。"},
         500,
         "10",
         "5000",
         "ms"},
    };
    addRows(table, numbers);
    const QVector<SwitchRow> switches = {
        {"CodeColorInvert",
         {"Looks for light codes on a dark ground too.", "反色读码",
          "同时识别深色背景上的浅色条码。"},
         0},
    };
    addRows(table, switches);
    addFilter(table);
    addRegions(table);
}
