#pragma once

#include <QPoint>
#include <QRect>

class QWidget;

/// Resizing a frameless window by the edges and corners that are enabled.
class WindowStretch
{
public:
    /// How near to the edge the mouse takes hold, in pixels.
    static constexpr int GRIP = 5;

    explicit WindowStretch(QWidget *window);

    /// Bits of CustomMainWindow::cSetStrechEdges.
    void setGrips(int grips) { m_nGrips = grips; }
    int grips() const { return m_nGrips; }
    /// `frame` is the drawn frame in the window's coordinates. False when there is nothing to take hold of.
    bool press(const QPoint &position, const QPoint &globalPosition, const QRect &frame);
    /// Resizes while the mouse holds an edge, else shows by the cursor what it would do.
    void move(const QPoint &position, const QPoint &globalPosition, const QRect &frame);
    void release() { m_held = Qt::Edges(); }
    bool isHeld() const { return m_held != Qt::Edges(); }

private:
    Qt::Edges edgesAt(const QPoint &position, const QRect &frame) const;

    QWidget *m_pWindow;
    int m_nGrips = 0;
    Qt::Edges m_held;
    QPoint m_start;
    QRect m_startGeometry;
};
