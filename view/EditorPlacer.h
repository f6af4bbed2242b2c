#pragma once

#include <QPointer>
#include <QRect>
#include <QVector>

class QWidget;
class VexaFeatureTreeView;
class VexaPropertyTreeItem;

/// Keeps only the editors of the rows in the viewport placed and shown; all others wait in a hidden widget, where they
/// cost nothing while the view paints and scrolls. GUI thread.
class EditorPlacer
{
public:
    explicit EditorPlacer(VexaFeatureTreeView *pView);
    Q_DISABLE_COPY(EditorPlacer)

    /// The hidden widget in which editors are made and wait.
    QWidget *park() const { return m_pPark; }
    /// Places and shows the editors of the rows in the viewport and hides those that left it. A focused editor stays
    /// shown, outside the viewport, as long as its row is laid out.
    void place();
    void forget();
    /// The rows in the viewport, from the top, as of the last place().
    const QVector<VexaPropertyTreeItem *> &rowsInSight() const { return m_rowsInSight; }

private:
    struct Cell
    {
        QWidget *pEditor;
        QRect rect;
        int nColumn;
        VexaPropertyTreeItem *pItem;
    };
    QVector<Cell> cellsInSight();
    void put(const Cell &cell);
    void leave(QWidget *pEditor);

    VexaFeatureTreeView *m_pView;
    QWidget *m_pPark;
    QVector<QPointer<QWidget>> m_placed;
    QVector<VexaPropertyTreeItem *> m_rowsInSight;
    bool m_bPlacing = false;
};
