#pragma once

#include <QColor>
#include <QRect>
#include <QString>

class QPainter;

/// Draws images and SVG crisply at any scale; what was drawn once is cached. GUI thread.
namespace KitIcons {

/// Full resource path of one of the kit's own icons ("arrow_down", "check", "close" ...).
QString path(const char *name);
/// Draws the file into `rect`, in one colour when a valid one is given. A file that cannot be read draws nothing.
void draw(QPainter *painter, const QRect &rect, const QString &path,
          const QColor &colour = QColor(), qreal opacity = 1.0);

} // namespace KitIcons
