// What items tell the view: signals on any thread, slots on the GUI thread.
#include "model/IVexaFeatureWidget.h"
#include "model/VexaPropertyTreeItem.h"
#include "view/EditorMaker.h"
#include "view/EditorPlacer.h"
#include "view/ItemNames.h"
#include "view/NodeNameRules.h"
#include "view/PendingRowUpdates.h"
#include "view/VexaFeatureTreeView.h"
#include "view/VexaPropertyTreeDelegate.h"
#include "view/VexaPropertyTreeModel.h"

#include <QThread>

void VexaFeatureTreeView::itemVisibleChanged(long lCameraID, VexaPropertyTreeItem *pItem,
                                             bool bVisible)
{
    if (m_bForbidUpdate) {
        return;
    }
    const bool bNever = pItem && NodeNameRules::isNeverShown(nodeNameOf(pItem));
    emit sigSetItemVisible(lCameraID, pItem, bVisible && !bNever);
}

void VexaFeatureTreeView::itemExpandedChanged(long lCameraID, VexaPropertyTreeItem *pItem,
                                              bool bExpanded)
{
    if (!m_bForbidUpdate) {
        emit sigSetItemExpended(lCameraID, pItem, bExpanded);
    }
}

void VexaFeatureTreeView::itemDataChanged(long lCameraID, VexaPropertyTreeItem *pItem, int nType,
                                          bool bNeedRecreateEditor, bool bFromUiJson)
{
    if (!m_bForbidUpdate) {
        if (QThread::currentThread() != thread()) {
            ++m_nQueuedUpdates;
        }
        emit sigUpdateEditorData(lCameraID, pItem, nType, bNeedRecreateEditor, bFromUiJson);
    }
}

void VexaFeatureTreeView::itemSpecialChanged(long lCameraID, VexaPropertyTreeItem *pItem, int nType)
{
    if (!m_bForbidUpdate) {
        emit sigUpdateSpecialInfo(lCameraID, pItem, nType);
    }
}

void VexaFeatureTreeView::itemReadOnlyChanged(long lCameraID, VexaPropertyTreeItem *pItem,
                                              bool bReadOnly)
{
    if (!m_bForbidUpdate) {
        emit sigSetItemReadOnly(lCameraID, pItem, bReadOnly);
    }
}

bool VexaFeatureTreeView::concerns(long lCameraID, VexaPropertyTreeItem *pItem) const
{
    // A call that waited in the queue may name an item that has gone.
    return lCameraID != -1 && lCameraID == m_lCameraID && isKnown(pItem);
}

bool VexaFeatureTreeView::isKnown(VexaPropertyTreeItem *pItem) const
{
    // Rows of a page may follow features that have no row there.
    return pItem && (m_rows.contains(pItem) || (m_pOwner && m_pOwner->isFollowed(pItem)));
}

void VexaFeatureTreeView::onUpdateEditorData(long lCameraID, VexaPropertyTreeItem *pItem, int nType,
                                             bool bNeedRecreateEditor, bool bFromUiJson)
{
    // Counted, because sender() walks over the connections of all editors. A call of the GUI thread that comes between
    // is at worst put off like its neighbours.
    const bool bQueued = m_nQueuedUpdates > 0;
    if (bQueued) {
        --m_nQueuedUpdates;
    }
    if (!concerns(lCameraID, pItem)) {
        return;
    }
    if (bNeedRecreateEditor || nType == -1 || (nType & 1)) {
        if (bQueued) {
            m_pPending->add(pItem, bNeedRecreateEditor);
        } else {
            const bool bWaited = m_pPending->take(pItem);
            refillEditor(pItem, bNeedRecreateEditor || bWaited);
        }
    }
    // The owner may have cleared the tree while an editor was refilled.
    if (m_pOwner && isKnown(pItem) && (nType == -1 || (nType & 2))) {
        m_pOwner->itemValueChanged(pItem, bFromUiJson);
    }
}

void VexaFeatureTreeView::refillEditor(VexaPropertyTreeItem *pItem, bool bRecreate)
{
    if (!m_rows.isOpened(pItem)) {
        return; // filled when it is opened
    }
    const QModelIndex index = indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_VALUE);
    QWidget *pEditor = indexWidget(index);
    if (!pEditor) {
        pItem->editorTookOver();
        return;
    }
    if (bRecreate || !EditorMaker::suits(pEditor, pItem)) {
        m_pDelegate->rollback(pEditor); // closing it ends an edit that the user has not ended
        closePersistentEditor(index);
        openCell(index);
        m_pPlacer->place();
        return;
    }
    const bool bBlank = m_pDelegate->isBlank(pEditor);
    m_pDelegate->setEditorData(pEditor, index);
    if (EditorMaker::hasTwoNodes(pItem)) {
        const QModelIndex name = indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME);
        m_pDelegate->setEditorData(indexWidget(name), name);
    }
    if (bBlank != m_pDelegate->isBlank(pEditor)) {
        m_pPlacer->place();
    }
}

void VexaFeatureTreeView::onUpdateSpecialInfo(long lCameraID, VexaPropertyTreeItem *pItem,
                                              int nType)
{
    if (concerns(lCameraID, pItem) && m_pOwner) {
        m_pOwner->itemSpecialChanged(pItem, nType);
    }
}

void VexaFeatureTreeView::onSetItemVisible(long lCameraID, VexaPropertyTreeItem *pItem, bool)
{
    if (!concerns(lCameraID, pItem) || !m_pOwner) {
        return;
    }
    m_pOwner->itemVisibleStateChanged(pItem);
    if (!m_rows.contains(pItem) || pItem->childCount() > 0) {
        return; // branches follow from their leaves
    }
    // The item's present state counts: a queued call may be older than a direct one that came before it.
    setItemHidden(pItem, !rowVisibility().isLeafShown(pItem));
    decideBranches(pItem);
}

void VexaFeatureTreeView::onSetItemReadOnly(long lCameraID, VexaPropertyTreeItem *pItem,
                                            bool bReadOnly)
{
    if (concerns(lCameraID, pItem) && m_pOwner) {
        m_pOwner->itemReadOnlyChanged(pItem, bReadOnly);
    }
}

void VexaFeatureTreeView::onSetItemExpended(long lCameraID, VexaPropertyTreeItem *pItem,
                                            bool bExpanded)
{
    if (concerns(lCameraID, pItem)) {
        setExpanded(indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME), bExpanded);
    }
}

void VexaFeatureTreeView::OnSigExpanded(QModelIndex index)
{
    if (m_pOwner && itemAt(index)) {
        m_pOwner->itemExpandedChanged(itemAt(index), true);
    }
}

void VexaFeatureTreeView::OnSigCollapsed(QModelIndex index)
{
    if (m_pOwner && itemAt(index)) {
        m_pOwner->itemExpandedChanged(itemAt(index), false);
    }
}
