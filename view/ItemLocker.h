#pragma once

#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"

/// Holds an item's update lock for its own life. Take nothing else and call no item operation under it.
class ItemLocker
{
public:
    explicit ItemLocker(const VexaPropertyTreeItem *pItem)
        : m_pItem(pItem)
    {
        m_pItem->updateLock();
    }
    ~ItemLocker() { m_pItem->updateUnlock(); }
    Q_DISABLE_COPY(ItemLocker)

private:
    const VexaPropertyTreeItem *m_pItem;
};

/// Feature name of the item's node in that column; empty for an item without a value.
inline QString nodeNameOf(const VexaPropertyTreeItem *pItem, int nColumn = 0)
{
    const ItemLocker lock(pItem);
    return pItem->value() ? pItem->value()->nodeName(nColumn) : QString();
}
