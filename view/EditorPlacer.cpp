#include "view/EditorPlacer.h"

#include "view/EditorOpener.h"
#include "view/VexaFeatureTreeView.h"
#include "view/VexaPropertyTreeDelegate.h"
#include "view/VexaPropertyTreeModel.h"

#include <QScopedValueRollback>

namespace {

constexpr int FRAME_GAP = 8; // pixels between an editor and the right edge, where the frame runs

/// Of its window: what the user has begun waits there while another window is on top.
bool hasFocusInside(const QWidget *pEditor)
{
    const QWidget *const pFocus = pEditor->window()->focusWidget();
    return pFocus && (pFocus == pEditor || pEditor->isAncestorOf(pFocus));
}

} // namespace

EditorPlacer::EditorPlacer(VexaFeatureTreeView *pView)
    : m_pView(pView)
    , m_pPark(new QWidget(pView->viewport()))
{
    m_pPark->hide();
}

void EditorPlacer::place()
{
    if (m_bPlacing || !m_pView->isVisible()) {
        return;
    }
    const QScopedValueRollback<bool> placing(m_bPlacing, true);
    const QVector<Cell> cells = cellsInSight();
    // The new set stands before any editor is hidden: hiding the focused one comes back here.
    const QVector<QPointer<QWidget>> before = m_placed;
    m_placed.clear();
    for (const Cell &cell : cells) {
        m_placed.append(cell.pEditor);
    }
    for (const Cell &cell : cells) {
        put(cell);
    }
    const QVector<QPointer<QWidget>> now = m_placed;
    for (const QPointer<QWidget> &pEditor : before) {
        if (pEditor && !now.contains(pEditor)) {
            leave(pEditor);
        }
    }
}

void EditorPlacer::forget()
{
    m_placed.clear();
    m_rowsInSight.clear();
}

QVector<EditorPlacer::Cell> EditorPlacer::cellsInSight()
{
    // One walk from the top row: each question to the tree for the place of a single row costs a walk over all rows.
    QVector<Cell> cells;
    m_rowsInSight.clear();
    QModelIndex index = m_pView->indexAt(QPoint(0, 0));
    int nTop = index.isValid() ? m_pView->visualRect(index).top() : 0;
    const int nBottom = m_pView->viewport()->height();
    const int nValueLeft = m_pView->columnViewportPosition(VexaPropertyTreeModel::COLUMN_VALUE);
    const int nValueWidth = m_pView->columnWidth(VexaPropertyTreeModel::COLUMN_VALUE) - FRAME_GAP;
    while (index.isValid() && nTop < nBottom) {
        VexaPropertyTreeItem *const pItem = m_pView->itemAt(index);
        const int nHeight = m_pView->rowHeight(index);
        m_rowsInSight.append(pItem);
        if (m_pView->m_pOpener->isActive()) {
            m_pView->openRow(pItem);
        }
        const QModelIndex value = index.sibling(index.row(), VexaPropertyTreeModel::COLUMN_VALUE);
        if (QWidget *const pEditor = m_pView->indexWidget(value)) {
            cells.append(
                {pEditor, QRect(nValueLeft, nTop, nValueWidth, nHeight), value.column(), pItem});
        }
        if (QWidget *const pEditor = m_pView->indexWidget(index)) {
            cells.append({pEditor, m_pView->visualRect(index), index.column(), pItem});
        }
        nTop += nHeight;
        index = m_pView->indexBelow(index);
    }
    return cells;
}

void EditorPlacer::put(const Cell &cell)
{
    if (cell.pEditor->parentWidget() == m_pPark) {
        cell.pEditor->setParent(m_pView->viewport());
    }
    QStyleOptionViewItem option = m_pView->viewOptions();
    option.rect = cell.rect;
    m_pView->m_pDelegate->updateEditorGeometry(cell.pEditor, option,
                                               m_pView->indexOfItem(cell.pItem, cell.nColumn));
    cell.pEditor->setVisible(!m_pView->m_pDelegate->isBlank(cell.pEditor));
}

void EditorPlacer::leave(QWidget *pEditor)
{
    if (hasFocusInside(pEditor)) {
        VexaPropertyTreeItem *const pItem = m_pView->m_pDelegate->itemOfEditor(pEditor);
        const int nColumn = m_pView->m_pDelegate->columnOfEditor(pEditor);
        const QRect rect = m_pView->m_rows.contains(pItem)
            ? m_pView->visualRect(m_pView->indexOfItem(pItem, nColumn))
            : QRect();
        if (!rect.isEmpty()) {
            m_placed.append(pEditor);
            put({pEditor, rect, nColumn, pItem});
            return;
        }
        // The row went, not the user: what was begun is given up, or the loss of focus would write half of it.
        m_pView->m_pDelegate->rollback(pEditor);
        const QPointer<QWidget> guard(pEditor);
        m_pView->setFocus(Qt::OtherFocusReason);
        if (!guard) {
            return;
        }
    }
    pEditor->hide();
    pEditor->setParent(m_pPark);
}
