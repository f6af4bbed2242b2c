#pragma once

#include <QPixmap>
#include <QString>

/// A vector picture of the resources, drawn for the density of the screen and kept in QPixmapCache. GUI thread.
namespace VectorPicture {

/// Its own size in logical pixels; empty for a path without a picture.
QSize size(const QString &strPath);
/// `size` in logical pixels, `dRatio` device pixels to each.
QPixmap pixmap(const QString &strPath, const QSize &size, qreal dRatio);

} // namespace VectorPicture
