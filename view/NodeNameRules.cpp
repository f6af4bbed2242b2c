#include "view/NodeNameRules.h"

#include <QLatin1String>

#include <algorithm>
#include <iterator>

namespace NodeNameRules {

int hintKind(const QString &strNodeName)
{
    struct HintRow
    {
        QLatin1String name;
        int kind;
    };
    static const HintRow hintRows[] = {
        {QLatin1String("ReverseX"), 0},
        {QLatin1String("ReverseY"), 1},
        {QLatin1String("PHARMACODE"), 2},
        {QLatin1String("PHARMACODE2d"), 3},
        {QLatin1String("Quality1DEnable"), 4},
        {QLatin1String("QualityEnable"), 5},
        {QLatin1String("CodeTrigEnable"), 6},
        {QLatin1String("HdrEnable"), 7},
        {QLatin1String("TriggerSelfTriggerPeriod"), 8},
    };
    const auto it = std::find_if(std::begin(hintRows), std::end(hintRows),
                                 [&](const HintRow &row) { return strNodeName == row.name; });
    return it == std::end(hintRows) ? NO_HINT : it->kind;
}

bool isNeverShown(const QString &strNodeName)
{
    static const QLatin1String neverShown[] = {
        QLatin1String("EMMCStateJpegShowStr"),
        QLatin1String("EMMCStateShowStr"),
        QLatin1String("EMMCCloseTime"),
        QLatin1String("EMMCCloseTimeShowMin"),
    };
    return std::find(std::begin(neverShown), std::end(neverShown), strNodeName)
        != std::end(neverShown);
}

} // namespace NodeNameRules
