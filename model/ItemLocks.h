#pragma once

#include "model/VexaPropertyTreeItem.h"

#include <QMutex>

/// Holds an item's update lock for its own life. No view is told and no other item is locked under it.
class ItemLock
{
public:
    explicit ItemLock(const VexaPropertyTreeItem *pItem)
        : m_pItem(pItem)
    {
        m_pItem->updateLock();
    }
    ~ItemLock() { m_pItem->updateUnlock(); }
    Q_DISABLE_COPY(ItemLock)

private:
    const VexaPropertyTreeItem *m_pItem;
};

namespace ItemLocks {

/// The one lock for the views and the partners of all items. Taken before an update lock, never under one. It is
/// held while a view is told, so that a view that took itself out hears nothing more.
QRecursiveMutex &views();

/// Tags whose value is read from the device.
bool isValueTag(const QString &strTagName);

} // namespace ItemLocks
