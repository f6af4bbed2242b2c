#include "view/RowFramePainter.h"

#include <QPainter>
#include <QRect>

namespace {

constexpr int CORNER = 4; // pixels
constexpr int INDENT = 20; // pixels from the frame to the row's cell
constexpr int QUARTER = 1440; // sixteenths of a degree

class FrameScope
{
public:
    explicit FrameScope(QPainter *pPainter)
        : m_pPainter(pPainter)
    {
        m_pPainter->save();
        m_pPainter->setPen(QPen(QColor(0x65, 0x6B, 0x78), 1));
    }
    ~FrameScope() { m_pPainter->restore(); }
    Q_DISABLE_COPY(FrameScope)

private:
    QPainter *m_pPainter;
};

void paintBottom(QPainter *pPainter, const QRect &row, int nLeft, int nRight)
{
    pPainter->drawLine(nLeft - INDENT + 2, row.bottom(), nRight - 2, row.bottom());
    pPainter->setRenderHint(QPainter::Antialiasing, true);
    pPainter->drawArc(nLeft - INDENT, row.bottom() - CORNER, CORNER, CORNER, -2 * QUARTER, QUARTER);
    pPainter->drawArc(nRight - CORNER, row.bottom() - CORNER, CORNER, CORNER, 0, -QUARTER);
    pPainter->setRenderHint(QPainter::Antialiasing, false);
}

void paintSides(QPainter *pPainter, int nTop, int nBottom, int nLeft, int nRight)
{
    pPainter->drawLine(nLeft - INDENT, nTop, nLeft - INDENT, nBottom);
    pPainter->drawLine(nRight, nTop, nRight, nBottom);
}

} // namespace

void RowFramePainter::paintFeatureRow(QPainter *pPainter, const QRect &row, int nLeft, int nRight,
                                      bool bLast)
{
    const FrameScope scope(pPainter);
    paintSides(pPainter, row.top(), bLast ? row.bottom() - 2 : row.bottom(), nLeft, nRight);
    if (bLast) {
        paintBottom(pPainter, row, nLeft, nRight);
    }
}

void RowFramePainter::paintCategoryRow(QPainter *pPainter, const QRect &row, int nLeft, int nRight,
                                       bool bExpanded)
{
    const FrameScope scope(pPainter);
    const int nTop = row.top() + CATEGORY_TOP_GAP;
    pPainter->drawLine(nLeft - INDENT + 2, nTop, nRight - 2, nTop);
    paintSides(pPainter, nTop + 2, bExpanded ? row.bottom() : row.bottom() - 2, nLeft, nRight);
    pPainter->setRenderHint(QPainter::Antialiasing, true);
    pPainter->drawArc(nLeft - INDENT, nTop, CORNER, CORNER, -2 * QUARTER, -QUARTER);
    pPainter->drawArc(nRight - CORNER, nTop, CORNER, CORNER, QUARTER, -QUARTER);
    pPainter->setRenderHint(QPainter::Antialiasing, false);
    if (!bExpanded) {
        paintBottom(pPainter, row, nLeft, nRight);
    }
}
