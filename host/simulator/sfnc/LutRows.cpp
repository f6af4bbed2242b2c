#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

namespace {

constexpr int kLutSize = 1024;

QVector<qint64> lutCurves()
{
    QVector<qint64> values;
    for (int i = 0; i < kLutSize; ++i) {
        values.append(i); // Luminance: a straight line
    }
    for (int i = 0; i < kLutSize; ++i) {
        values.append(kLutSize - 1 - i); // Inverse
    }
    return values;
}

} // namespace

// Table and index are the client's own: the registers know the coefficients alone, by their addresses.
void addLutRows(FeatureTable &t)
{
    t.category("LUTControl", {"Features of the look-up table.", "查找表控制", "控制查找表的特征。"},
               0x40000, "Root", "Expert");
    t.enumeration("LUTSelector",
                  {"Selects which look-up table to control.", "查找表选择", "选择要控制的查找表。"})
        .entry("Luminance", 0, "亮度")
        .entry("Inverse", 1, "反相")
        .expert()
        .value("0");
    t.intSwissKnife("LUTEnableOffset", "SEL * 4", {{"SEL", "LUTSelector"}});
    t.boolean("LUTEnable",
              {"Activates the selected look-up table.", "查找表使能", "启用所选查找表。"})
        .in(Int(4, 0).offsetBy("LUTEnableOffset", 2))
        .expert()
        .selectedBy("LUTSelector");
    t.integer("LUTIndex",
              {"Index of the coefficient that LUTValue reads and writes.", "查找表索引",
               "查找表值所读写系数的索引。"})
        .value("256")
        .range("0", "1023", "1")
        .shownAs("PureNumber")
        .guru()
        .selectedBy("LUTSelector");
    t.intSwissKnife("LUTOffset", "(SEL * 1024 + INDEX) * 4",
                    {{"SEL", "LUTSelector"}, {"INDEX", "LUTIndex"}});
    t.integer("LUTValue",
              {"Value at the entry LUTIndex of the selected look-up table.", "查找表值",
               "所选查找表在当前索引处的值。"})
        .in(Int(4, 0).values(lutCurves()).offsetBy("LUTOffset", 2 * kLutSize))
        .range("0", "1023", "1")
        .shownAs("Linear")
        .guru()
        .selectedBy("LUTSelector")
        .selectedBy("LUTIndex");
}
