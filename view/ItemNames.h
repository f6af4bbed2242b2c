#pragma once

#include "model/CTreeItemValue.h"
#include "model/ItemLocks.h"
#include "model/VexaPropertyTreeItem.h"

/// Feature name of the item's node in that column; empty for an item without a value. Any thread.
inline QString nodeNameOf(const VexaPropertyTreeItem *pItem, int nColumn = 0)
{
    const ItemLock lock(pItem);
    return pItem->value() ? pItem->value()->nodeName(nColumn) : QString();
}

/// The row of a category of the description, or of that of the favourites.
inline bool isCategoryRow(const VexaPropertyTreeItem *pItem)
{
    return pItem->itemType() == ITEM_CATEGORY || pItem->itemType() == ITEM_FAVORITES_CATEGORY;
}
