#include "view/CodeNumberLimit.h"

#include "shell/VexaMainFeatureWidget.h"

#include <algorithm>
#include <iterator>

qint64 codeNumberLimit(long lCameraID, const QString &strNodeName, qint64 nMaximum)
{
    static const QLatin1String countingNodes[] = {
        QLatin1String("LocBarNum"),
        QLatin1String("IdxLocCodeNum"),
        QLatin1String("StackBarNum"),
    };
    if (std::find(std::begin(countingNodes), std::end(countingNodes), strNodeName)
        == std::end(countingNodes)) {
        return nMaximum;
    }
    const int nLimit = VexaMainFeatureWidget::instance()->GetCodeNumMaxMin(lCameraID, strNodeName);
    return nLimit == -1 ? nMaximum : nLimit;
}
