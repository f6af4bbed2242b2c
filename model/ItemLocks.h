#pragma once

#include "model/VexaPropertyTreeItem.h"

#include <QCoreApplication>
#include <QMutex>
#include <QThread>

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

/// The one lock for the views and the partners of all items. Taken before an update lock, never under one. A worker
/// holds it while it tells a view, so that a view that took itself out hears nothing more.
QRecursiveMutex &views();

/// Tags whose value is read from the device.
bool isValueTag(const QString &strTagName);

} // namespace ItemLocks

/// Guards the views and the partners while they are told of a change. Only the GUI thread changes them, so it needs no
/// lock to read them, and must hold none: what a view does then may wait for a worker that is telling one itself.
class TellingLock
{
public:
    TellingLock()
        : m_bLocks(!isGuiThread())
    {
        if (m_bLocks) {
            ItemLocks::views().lock();
        }
    }
    ~TellingLock()
    {
        if (m_bLocks) {
            ItemLocks::views().unlock();
        }
    }
    Q_DISABLE_COPY(TellingLock)

private:
    static bool isGuiThread()
    {
        return QCoreApplication::instance()
            && QThread::currentThread() == QCoreApplication::instance()->thread();
    }

    const bool m_bLocks;
};
