#include "host/controlkit/WindowStretch.h"

#include <QWidget>
#include <QWindow>

namespace {

struct GripRow
{
    int bit;
    int edges; ///< Qt::Edges
    Qt::CursorShape cursor;
};

/// The bits are those of CustomMainWindow::cSetStrechEdges.
const GripRow GRIPS[] = {
    {1, Qt::RightEdge, Qt::SizeHorCursor},
    {2, Qt::BottomEdge, Qt::SizeVerCursor},
    {4, Qt::TopEdge, Qt::SizeVerCursor},
    {8, Qt::BottomEdge | Qt::RightEdge, Qt::SizeFDiagCursor},
    {16, Qt::TopEdge | Qt::LeftEdge, Qt::SizeFDiagCursor},
    {32, Qt::TopEdge | Qt::RightEdge, Qt::SizeBDiagCursor},
    {64, Qt::LeftEdge, Qt::SizeHorCursor},
    {128, Qt::BottomEdge | Qt::LeftEdge, Qt::SizeBDiagCursor},
};

const GripRow *gripOf(int edges)
{
    for (const GripRow &row : GRIPS) {
        if (row.edges == edges) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace

WindowStretch::WindowStretch(QWidget *window)
    : m_pWindow(window)
{
}

Qt::Edges WindowStretch::edgesAt(const QPoint &position, const QRect &frame) const
{
    if (m_nGrips == 0 || m_pWindow->isMaximized() || !frame.contains(position)) {
        return Qt::Edges();
    }
    int edges = 0;
    edges |= position.x() < frame.left() + GRIP ? int(Qt::LeftEdge) : 0;
    edges |= position.x() > frame.right() - GRIP ? int(Qt::RightEdge) : 0;
    edges |= position.y() < frame.top() + GRIP ? int(Qt::TopEdge) : 0;
    edges |= position.y() > frame.bottom() - GRIP ? int(Qt::BottomEdge) : 0;
    const GripRow *const grip = gripOf(edges);
    return grip && (m_nGrips & grip->bit) ? Qt::Edges(edges) : Qt::Edges();
}

bool WindowStretch::press(const QPoint &position, const QPoint &globalPosition, const QRect &frame)
{
    const Qt::Edges edges = edgesAt(position, frame);
    if (edges == Qt::Edges()) {
        return false;
    }
    QWindow *const handle = m_pWindow->windowHandle();
    if (!handle || !handle->startSystemResize(edges)) {
        m_held = edges;
        m_start = globalPosition;
        m_startGeometry = m_pWindow->geometry();
    }
    return true;
}

void WindowStretch::move(const QPoint &position, const QPoint &globalPosition, const QRect &frame)
{
    if (!isHeld()) {
        const GripRow *const grip = gripOf(int(edgesAt(position, frame)));
        if (grip) {
            m_pWindow->setCursor(grip->cursor);
        } else {
            m_pWindow->unsetCursor();
        }
        return;
    }
    const QPoint moved = globalPosition - m_start;
    const QSize smallest = m_pWindow->minimumSizeHint().expandedTo(m_pWindow->minimumSize());
    const QSize largest = m_pWindow->maximumSize();
    QRect geometry = m_startGeometry;
    const auto bounded = [](int wanted, int least, int most) {
        return qMax(least, qMin(wanted, most));
    };
    if (m_held & Qt::RightEdge) {
        geometry.setWidth(bounded(geometry.width() + moved.x(), smallest.width(), largest.width()));
    }
    if (m_held & Qt::BottomEdge) {
        geometry.setHeight(
            bounded(geometry.height() + moved.y(), smallest.height(), largest.height()));
    }
    if (m_held & Qt::LeftEdge) {
        geometry.setLeft(
            geometry.right() + 1
            - bounded(geometry.width() - moved.x(), smallest.width(), largest.width()));
    }
    if (m_held & Qt::TopEdge) {
        geometry.setTop(
            geometry.bottom() + 1
            - bounded(geometry.height() - moved.y(), smallest.height(), largest.height()));
    }
    m_pWindow->setGeometry(geometry);
}
