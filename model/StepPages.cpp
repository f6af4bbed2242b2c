#include "model/StepPages.h"

#include "model/CTreeItemValue.h"
#include "model/IVexaFeatureWidget.h"
#include "model/VexaPropertyTreeItem.h"

#include <algorithm>

namespace {

StepPages::Widgets &pageWidgets()
{
    static StepPages::Widgets widgets;
    return widgets;
}

} // namespace

void StepPages::enter(IVexaFeatureWidget *pWidget)
{
    pageWidgets().append(pWidget);
}

void StepPages::leave(IVexaFeatureWidget *pWidget)
{
    pageWidgets().removeAll(pWidget);
}

StepPages::Widgets StepPages::takeDown(long lCameraID)
{
    Widgets shown;
    const Widgets widgets = pageWidgets();
    for (const QPointer<IVexaFeatureWidget> &pWidget : widgets) {
        if (!pWidget || !pWidget->isInitialized(lCameraID)) {
            continue;
        }
        if (pWidget->shownCameraID() == lCameraID) {
            shown.append(pWidget);
        }
        pWidget->removeCameraID(lCameraID);
    }
    return shown;
}

void StepPages::layAnew(const Widgets &widgets, long lCameraID)
{
    for (const QPointer<IVexaFeatureWidget> &pWidget : widgets) {
        if (pWidget && pWidget->shownCameraID() == -1) {
            pWidget->setCameraID(lCameraID);
        }
    }
}

VexaPropertyTreeItem *StepPages::findRow(const VexaPropertyTreeItem *pBranch,
                                         const QString &strName)
{
    for (int nRow = 0; pBranch && nRow < pBranch->childCount(); ++nRow) {
        VexaPropertyTreeItem *const pChild = pBranch->child(nRow);
        const bool bFound = pChild && pChild->value() && pChild->value()->m_strNodeName == strName;
        VexaPropertyTreeItem *const pItem = bFound ? pChild : findRow(pChild, strName);
        if (pItem) {
            return pItem;
        }
    }
    return nullptr;
}
