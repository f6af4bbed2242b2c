// What an item shows of itself, and what it tells its views and the partner row of the same feature.

#include "ShellServicesModule/COMMONINTERFACE.h"
#include "model/CTreeItemValue.h"
#include "model/IVexaFeatureNotify.h"
#include "model/ItemLocks.h"
#include "model/VexaPropertyTreeItem.h"

#include <QHash>
#include <QMutexLocker>

#include <algorithm>

namespace {

/// Nodes that the user sets by drawing on the image while drawing mode is on.
bool isSetByDrawing(const VexaPropertyTreeItem *pItem)
{
    static const QSet<QString> nodes{
        QStringLiteral("OffsetX"),
        QStringLiteral("OffsetY"),
        QStringLiteral("Width"),
        QStringLiteral("Height"),
        QStringLiteral("AutoFunctionAOIWidth"),
        QStringLiteral("AutoFunctionAOIHeight"),
        QStringLiteral("AutoFunctionAOIOffsetX"),
        QStringLiteral("AutoFunctionAOIOffsetY"),
    };
    if (COMMONINTERFACE::drawingMode() == 0) {
        return false;
    }
    const ItemLock lock(pItem);
    return pItem->value() && nodes.contains(pItem->value()->m_strNodeName);
}

/// Which items each view is registered on, so that a view need not touch an item that has gone. Guarded by the lock of
/// the views.
using Registrations = QHash<IVexaFeatureNotify *, QSet<VexaPropertyTreeItem *>>;

Registrations &registrations()
{
    static Registrations items;
    return items;
}

void forgetRegistration(IVexaFeatureNotify *pView, VexaPropertyTreeItem *pItem)
{
    const auto known = registrations().find(pView);
    if (known != registrations().end() && known->remove(pItem) && known->isEmpty()) {
        registrations().erase(known);
    }
}

/// The part of a fingerprint that asks for another editor; null when there is none.
QStringRef editorKind(const QString &strStatus)
{
    const int nStart = strStatus.indexOf(QLatin1String("NeedRecreateEditor:"));
    return nStart < 0 ? QStringRef() : strStatus.midRef(nStart);
}

} // namespace

QRecursiveMutex &ItemLocks::views()
{
    static QRecursiveMutex mutex;
    return mutex;
}

bool ItemLocks::isValueTag(const QString &strTagName)
{
    static const QSet<QString> tags{QStringLiteral("Boolean"), QStringLiteral("Integer"),
                                    QStringLiteral("Enumeration"), QStringLiteral("Float"),
                                    QStringLiteral("StringReg")};
    return tags.contains(strTagName);
}

template<typename Call>
void VexaPropertyTreeItem::tellViews(const Call &call) const
{
    // On a copy: a view may take itself or another one out while it is told.
    const QSet<IVexaFeatureNotify *> views = m_views;
    for (IVexaFeatureNotify *pView : views) {
        if (pView && m_views.contains(pView)) {
            call(*pView);
        }
    }
}

void VexaPropertyTreeItem::registerView(IVexaFeatureNotify *pView)
{
    const QMutexLocker locker(&ItemLocks::views());
    m_views.insert(pView);
    registrations()[pView].insert(this);
}

void VexaPropertyTreeItem::removeView(IVexaFeatureNotify *pView)
{
    const QMutexLocker locker(&ItemLocks::views());
    m_views.remove(pView);
    forgetRegistration(pView, this);
}

void VexaPropertyTreeItem::removeViewFrom(VexaPropertyTreeItem *pItem, IVexaFeatureNotify *pView)
{
    const QMutexLocker locker(&ItemLocks::views());
    if (registrations().value(pView).contains(pItem)) {
        pItem->removeView(pView);
    }
}

void VexaPropertyTreeItem::removeViewFromAll(IVexaFeatureNotify *pView)
{
    const QMutexLocker locker(&ItemLocks::views());
    const QSet<VexaPropertyTreeItem *> items = registrations().take(pView);
    for (VexaPropertyTreeItem *pItem : items) {
        pItem->m_views.remove(pView);
    }
}

void VexaPropertyTreeItem::forgetRegistrations()
{
    for (IVexaFeatureNotify *pView : qAsConst(m_views)) {
        forgetRegistration(pView, this);
    }
}

bool VexaPropertyTreeItem::readOnly() const
{
    return m_bReadOnly;
}

void VexaPropertyTreeItem::setReadOnly(long lCameraID, bool bReadOnly)
{
    const TellingLock lock;
    forAllRows([&](VexaPropertyTreeItem &row) {
        if (row.m_bReadOnly.exchange(bReadOnly) != bReadOnly) {
            row.tellViews([&](IVexaFeatureNotify &view) {
                view.itemReadOnlyChanged(lCameraID, &row, bReadOnly);
            });
        }
    });
}

bool VexaPropertyTreeItem::visible() const
{
    if (m_children.isEmpty()) {
        return m_bVisible && branchesOpen();
    }
    return branchesOpen() && shownBelow();
}

bool VexaPropertyTreeItem::branchesOpen() const
{
    for (const VexaPropertyTreeItem *pBranch = parent(PARENT_FEATURE_TREE); pBranch;
         pBranch = pBranch->parent(PARENT_FEATURE_TREE)) {
        if (!pBranch->m_bBranchVisible) {
            return false;
        }
    }
    return true;
}

bool VexaPropertyTreeItem::shownBelow() const
{
    if (m_children.isEmpty()) {
        return m_bVisible;
    }
    return m_bBranchVisible
        && std::any_of(m_children.cbegin(), m_children.cend(),
                       [this](const VexaPropertyTreeItem *pChild) {
                           if (!pChild) {
                               return false;
                           }
                           // A page's row of a feature has other branches above it in the feature tree.
                           return pChild->parent(PARENT_FEATURE_TREE) == this ? pChild->shownBelow()
                                                                              : pChild->visible();
                       });
}

int VexaPropertyTreeItem::visibleChildCount() const
{
    return static_cast<int>(std::count_if(
        m_children.cbegin(), m_children.cend(),
        [](const VexaPropertyTreeItem *pChild) { return pChild && pChild->visible(); }));
}

void VexaPropertyTreeItem::setVisible(bool bVisible, long lCameraID, bool bRecursive)
{
    const TellingLock lock;
    forAllRows(
        [&](VexaPropertyTreeItem &row) { row.applyVisible(bVisible, lCameraID, bRecursive); });
}

void VexaPropertyTreeItem::applyVisible(bool bVisible, long lCameraID, bool bRecursive)
{
    if (m_children.isEmpty()) {
        m_bWantsVisible = bVisible;
        applyLeafVisible(lCameraID);
        return;
    }
    // Without recursion a branch always reopens, whatever is asked for.
    m_bBranchVisible = bVisible || !bRecursive;
    applyBranch(lCameraID);
}

void VexaPropertyTreeItem::applyBranch(long lCameraID)
{
    for (VexaPropertyTreeItem *pChild : qAsConst(m_children)) {
        if (!pChild) {
            continue;
        }
        if (pChild->m_children.isEmpty()) {
            pChild->applyLeafVisible(lCameraID);
        } else {
            pChild->applyBranch(lCameraID);
        }
    }
}

void VexaPropertyTreeItem::applyLeafVisible(long lCameraID)
{
    bool bVisible = m_bWantsVisible && branchesOpen();
    if (bVisible && m_nItemType == ITEM_FAVORITE && m_pMappingItem) {
        bVisible = m_pMappingItem->branchesOpen();
    }
    if (bVisible != m_bVisible && !(bVisible && isSetByDrawing(this))) {
        m_bVisible = bVisible;
        tellViews(
            [&](IVexaFeatureNotify &view) { view.itemVisibleChanged(lCameraID, this, bVisible); });
    }
    if (m_pMappingItem && m_nItemType != ITEM_FAVORITE
        && m_pMappingItem->m_nItemType == ITEM_FAVORITE) {
        m_pMappingItem->applyLeafVisible(lCameraID);
    }
}

void VexaPropertyTreeItem::bringVisibleUp(long lCameraID)
{
    const TellingLock lock;
    if (m_children.isEmpty()) {
        applyLeafVisible(lCameraID);
    }
}

void VexaPropertyTreeItem::setExpanded(bool bExpanded, long lCameraID)
{
    const TellingLock lock;
    if (m_children.isEmpty()) {
        return;
    }
    forAllRows([&](VexaPropertyTreeItem &row) {
        row.tellViews([&](IVexaFeatureNotify &view) {
            view.itemExpandedChanged(lCameraID, &row, bExpanded);
        });
    });
}

void VexaPropertyTreeItem::notifyViewUpdate(long lCameraID, int nType, bool bNeedRecreateEditor,
                                            bool bFromUiJson)
{
    const TellingLock lock;
    bringOtherRowsUp(false);
    forAllRows([&](VexaPropertyTreeItem &row) {
        row.tellViews([&](IVexaFeatureNotify &view) {
            view.itemDataChanged(lCameraID, &row, nType, bNeedRecreateEditor, bFromUiJson);
        });
    });
}

void VexaPropertyTreeItem::bringOtherRowsUp(bool bCopyBase)
{
    if (!m_pTwins && !m_pMappingItem) {
        return;
    }
    // Never two update locks at once.
    const std::unique_ptr<CTreeItemValue> snapshot = valueSnapshot();
    forAllRows([&](VexaPropertyTreeItem &row) {
        if (&row == this) {
            return;
        }
        const ItemLock lock(&row);
        if (row.m_pValue) {
            row.m_pValue->copy(snapshot.get(), bCopyBase);
        }
        if (m_bValueCached) {
            row.m_bValueCached = true;
        }
    });
}

void VexaPropertyTreeItem::notifiViewSpecialUpdate(NotifyViewSpecial eType, long lCameraID)
{
    const TellingLock lock;
    // A view of both rows hears of the other one twice.
    tellViews([&](IVexaFeatureNotify &view) {
        forAllRows(
            [&](VexaPropertyTreeItem &row) { view.itemSpecialChanged(lCameraID, &row, eType); });
    });
    bringOtherRowsUp(false);
    forAllRows([&](VexaPropertyTreeItem &row) {
        if (&row != this) {
            row.tellViews(
                [&](IVexaFeatureNotify &view) { view.itemSpecialChanged(lCameraID, &row, eType); });
        }
    });
}

void VexaPropertyTreeItem::endUpdateItem(long lCameraID)
{
    QString strShown;
    QString strStatus;
    bool bEditorLags = false;
    {
        const ItemLock lock(this);
        if (!m_pValue) {
            return;
        }
        strShown = m_pValue->m_strCurrentStatus;
        strStatus = m_pValue->createCurrentStauts(m_bReadOnly);
        bEditorLags = m_bValueCached != m_bEditorCached && ItemLocks::isValueTag(m_strTagName);
    }
    if (strShown == strStatus && !bEditorLags) {
        return;
    }
    const QStringRef shownKind = editorKind(strShown);
    const QStringRef kind = editorKind(strStatus);
    const bool bNeedRecreateEditor = !shownKind.isNull() && !kind.isNull() && shownKind != kind;

    const TellingLock lock;
    bringOtherRowsUp(true);
    notifyViewUpdate(lCameraID, -1, bNeedRecreateEditor, false);
}
