#pragma once

class QPainter;
class QRect;

/// Draws the rounded frames around a category and its rows, a piece per row. GUI thread.
namespace RowFramePainter {

/// `nLeft` is the left edge of the row's cell, `nRight` the right edge of the frame. The last row closes the frame.
void paintFeatureRow(QPainter *pPainter, const QRect &row, int nLeft, int nRight, bool bLast);
/// A collapsed category is a frame of its own.
void paintCategoryRow(QPainter *pPainter, const QRect &row, int nLeft, int nRight, bool bExpanded);

/// Pixels by which a category's frame and caption stand below the top of its row.
constexpr int CATEGORY_TOP_GAP = 10;

} // namespace RowFramePainter
