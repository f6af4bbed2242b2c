// Events of the view: mouse, keyboard, layout and painting.
#include "model/VexaPropertyTreeItem.h"
#include "view/EditorOpener.h"
#include "view/EditorPlacer.h"
#include "view/PendingRowUpdates.h"
#include "view/RowFramePainter.h"
#include "view/VexaFeatureTreeView.h"
#include "view/VexaPropertyTreeDelegate.h"
#include "view/VexaPropertyTreeModel.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

constexpr int FIXED_ROW_HEIGHT = 38; // pixels, of a view without scrolling of its own

} // namespace

void VexaFeatureTreeView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
        if (!m_strSearchText.isEmpty()) {
            filterRows();
        }
    }
    QTreeView::changeEvent(event);
}

void VexaFeatureTreeView::mouseMoveEvent(QMouseEvent *event)
{
    QTreeView::mouseMoveEvent(event);
    activateFeature(itemAt(indexAt(event->pos())));
    event->ignore();
}

void VexaFeatureTreeView::mousePressEvent(QMouseEvent *event)
{
    QTreeView::mousePressEvent(event);
    event->ignore();
}

void VexaFeatureTreeView::mouseReleaseEvent(QMouseEvent *event)
{
    QTreeView::mouseReleaseEvent(event);
    event->ignore();
}

void VexaFeatureTreeView::wheelEvent(QWheelEvent *event)
{
    if (m_bFixedHeight) {
        event->ignore(); // the page around the view scrolls
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
    activateFeature(itemAt(indexAt(event->position().toPoint())));
}

void VexaFeatureTreeView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
}

void VexaFeatureTreeView::showEvent(QShowEvent *event)
{
    QTreeView::showEvent(event);
    m_pPlacer->place();
}

void VexaFeatureTreeView::updateGeometries()
{
    if (m_bFixedHeight) {
        setFixedHeight(shownRowCount(QModelIndex()) * FIXED_ROW_HEIGHT);
    }
    QTreeView::updateGeometries();
}

int VexaFeatureTreeView::shownRowCount(const QModelIndex &parent) const
{
    int nRows = 0;
    for (int i = 0; i < m_pModel->rowCount(parent); ++i) {
        const QModelIndex index = m_pModel->index(i, VexaPropertyTreeModel::COLUMN_NAME, parent);
        if (!m_rows.isHidden(itemAt(index))) {
            nRows += 1 + (isExpanded(index) ? shownRowCount(index) : 0);
        }
    }
    return nRows;
}

void VexaFeatureTreeView::updateEditorGeometries()
{
    m_pPlacer->place();
}

void VexaFeatureTreeView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    m_pPlacer->place();
}

void VexaFeatureTreeView::drawBranches(QPainter *painter, const QRect &rect,
                                       const QModelIndex &index) const
{
    QRect branch = rect;
    const VexaPropertyTreeItem *const pItem = itemAt(index);
    if (pItem && pItem->itemType() == ITEM_CATEGORY) {
        branch.setTop(branch.top() + RowFramePainter::CATEGORY_TOP_GAP);
    }
    QTreeView::drawBranches(painter, branch, index);
}

void VexaFeatureTreeView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    for (int i = start; i <= end; ++i) {
        if (VexaPropertyTreeItem *const pItem = itemAt(m_pModel->index(i, 0, parent))) {
            m_rows.add(pItem);
        }
    }
    QTreeView::rowsInserted(parent, start, end);
}

void VexaFeatureTreeView::rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end)
{
    for (int i = start; i <= end; ++i) {
        if (VexaPropertyTreeItem *const pItem = itemAt(m_pModel->index(i, 0, parent))) {
            m_rows.remove(pItem);
        }
    }
    m_pActiveItem = nullptr;
    m_pDelegate->setCommitBlocked(
        true); // the editors of the rows close, whatever was begun in them
    QTreeView::rowsAboutToBeRemoved(parent, start, end);
    m_pDelegate->setCommitBlocked(false);
}

void VexaFeatureTreeView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTreeView::currentChanged(current, previous);
    activateFeature(itemAt(current));
}

void VexaFeatureTreeView::onEditorActivated(QWidget *pEditor)
{
    activateFeature(m_pDelegate->itemOfEditor(pEditor));
}

void VexaFeatureTreeView::onRefillNeeded(QWidget *pEditor)
{
    VexaPropertyTreeItem *const pItem = m_pDelegate->itemOfEditor(pEditor);
    if (m_rows.contains(pItem)) {
        refillEditor(pItem, false);
    }
}

void VexaFeatureTreeView::commitData(QWidget *editor)
{
    // Nothing follows the write: a box in it may have closed the camera, and the base would go on with the editor.
    VexaPropertyTreeItem *const pItem = m_pDelegate->itemOfEditor(editor);
    if (m_rows.contains(pItem)) {
        m_pDelegate->setModelData(editor, m_pModel,
                                  indexOfItem(pItem, m_pDelegate->columnOfEditor(editor)));
    }
}

void VexaFeatureTreeView::activateFeature(VexaPropertyTreeItem *pItem)
{
    if (pItem && pItem != m_pActiveItem && m_rows.contains(pItem)) {
        m_pActiveItem = pItem;
        emit sigFeatureActivated(indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME));
    }
}

QModelIndex VexaFeatureTreeView::focusedRow() const
{
    VexaPropertyTreeItem *const pItem = m_pDelegate->itemOfEditor(focusedEditor());
    return m_rows.contains(pItem) ? indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME)
                                  : QModelIndex();
}

QWidget *VexaFeatureTreeView::focusedEditor() const
{
    QWidget *pWidget = window()->focusWidget();
    while (pWidget && !m_pDelegate->itemOfEditor(pWidget)) {
        pWidget = pWidget->parentWidget();
    }
    return pWidget;
}

QWidget *VexaFeatureTreeView::focusableEditor(const QModelIndex &row) const
{
    const QModelIndex value = row.sibling(row.row(), VexaPropertyTreeModel::COLUMN_VALUE);
    QWidget *const pEditor = indexWidget(value);
    return pEditor && pEditor->isEnabled() && !m_pDelegate->isBlank(pEditor) ? pEditor : nullptr;
}

bool VexaFeatureTreeView::focusNextPrevChild(bool next)
{
    QModelIndex row = focusedRow();
    if (row.isValid()) {
        row = next ? indexBelow(row) : indexAbove(row);
    } else if (next && m_pDelegate->isEditorsEnabled()) {
        row = currentIndex().isValid() ? currentIndex().sibling(currentIndex().row(), 0)
                                       : indexAt(QPoint(0, 0));
    }
    while (row.isValid()) {
        if (m_pOpener->isActive()) {
            openRow(itemAt(row));
        }
        if (QWidget *const pEditor = focusableEditor(row)) {
            setCurrentIndex(row);
            showRow(row); // an editor out of sight is hidden and cannot take the focus
            pEditor->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
        row = next ? indexBelow(row) : indexAbove(row);
    }
    return leaveByTab(next);
}

void VexaFeatureTreeView::showRow(const QModelIndex &row)
{
    scrollTo(row);
    // The base leaves a row that comes from below one pixel short.
    const int nHidden = visualRect(row).bottom() - viewport()->rect().bottom();
    if (nHidden > 0) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() + nHidden);
    }
    m_pPlacer->place();
}

bool VexaFeatureTreeView::leaveByTab(bool bNext)
{
    // The editors stand in the window's chain of focus too, in no order that means anything.
    QWidget *pWidget = this;
    do {
        pWidget = bNext ? pWidget->nextInFocusChain() : pWidget->previousInFocusChain();
        const bool bTakesTab = (pWidget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (bTakesTab && pWidget != this && !isAncestorOf(pWidget) && !pWidget->focusProxy()
            && pWidget->isVisibleTo(window()) && pWidget->isEnabled()) {
            pWidget->setFocus(bNext ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    } while (pWidget != this);
    return false;
}
