#include "view/RowVisibility.h"

#include "model/IVexaFeatureWidget.h"
#include "view/ItemNames.h"
#include "view/NodeNameRules.h"

bool RowVisibility::isLeafShown(VexaPropertyTreeItem *pItem) const
{
    if (NodeNameRules::isNeverShown(nodeNameOf(pItem)) || !isWanted(pItem)
        || (pOwner && pOwner->isHiddenByBasic(lCameraID, pItem))) {
        return false;
    }
    return strSearchText.isEmpty() || pItem->searchVisible(strSearchText);
}

bool RowVisibility::isWanted(VexaPropertyTreeItem *pItem) const
{
    // The item's own answer covers its branches; the lists of this view count for everything below a listed row, the
    // nearest one first.
    if (!forceShow.isEmpty() || !forceHide.isEmpty()) {
        for (VexaPropertyTreeItem *pRow = pItem; pRow; pRow = pRow->parent(nParentType)) {
            if (forceShow.contains(pRow)) {
                return pRow == pItem || pItem->visible();
            }
            if (forceHide.contains(pRow)) {
                return false;
            }
        }
    }
    return pItem->visible();
}
