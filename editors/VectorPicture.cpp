#include "editors/VectorPicture.h"

#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

QSize VectorPicture::size(const QString &strPath)
{
    static QHash<QString, QSize> sizes;
    auto it = sizes.find(strPath);
    if (it == sizes.end()) {
        it = sizes.insert(strPath, QSvgRenderer(strPath).defaultSize());
    }
    return *it;
}

QPixmap VectorPicture::pixmap(const QString &strPath, const QSize &size, qreal dRatio)
{
    const QString strKey =
        QStringLiteral("%1 %2 %3 %4").arg(strPath).arg(size.width()).arg(size.height()).arg(dRatio);
    QPixmap pixmap;
    if (size.isEmpty() || QPixmapCache::find(strKey, &pixmap)) {
        return pixmap;
    }
    pixmap = QPixmap(size * dRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(strPath).render(&painter, QRectF(pixmap.rect()));
    painter.end();
    pixmap.setDevicePixelRatio(dRatio);
    QPixmapCache::insert(strKey, pixmap);
    return pixmap;
}
