#include "host/controlkit/KitIcons.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

QPixmap render(const QString &path, const QSize &size, qreal ratio, const QColor &colour)
{
    const QSize pixels = (QSizeF(size) * ratio).toSize();
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    if (!QFile::exists(path)) {
        return pixmap;
    }
    QPainter painter(&pixmap);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        QSvgRenderer(path).render(&painter, QRectF(QPointF(), QSizeF(pixels)));
    } else {
        painter.drawPixmap(pixmap.rect(), QPixmap(path));
    }
    if (colour.isValid()) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), colour);
    }
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

} // namespace

QString KitIcons::path(const char *name)
{
    return QStringLiteral(":/ControlKit/icons/%1.svg").arg(QLatin1String(name));
}

void KitIcons::draw(QPainter *painter, const QRect &rect, const QString &path, const QColor &colour,
                    qreal opacity)
{
    if (path.isEmpty() || rect.isEmpty()) {
        return;
    }
    const qreal ratio = painter->device()->devicePixelRatioF();
    const QString key = QStringLiteral("ControlKit|%1|%2x%3|%4|%5")
                            .arg(path)
                            .arg(rect.width())
                            .arg(rect.height())
                            .arg(ratio)
                            .arg(colour.isValid() ? colour.rgba() : 0U, 0, 16);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = render(path, rect.size(), ratio, colour);
        QPixmapCache::insert(key, pixmap);
    }
    const qreal former = painter->opacity();
    painter->setOpacity(former * opacity);
    painter->drawPixmap(rect.topLeft(), pixmap);
    painter->setOpacity(former);
}
