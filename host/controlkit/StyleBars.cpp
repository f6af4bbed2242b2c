#include "host/controlkit/StyleBars.h"

#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"

#include <QPainter>

namespace {

using KitColour::of;

constexpr int THUMB_INSET = 3;
constexpr int BAR_RADIUS = 3;

} // namespace

QRect StyleBars::scrollPart(const QStyleOptionSlider *option, QStyle::SubControl part)
{
    const QRect &bar = option->rect;
    const bool horizontal = option->orientation == Qt::Horizontal;
    const int length = horizontal ? bar.width() : bar.height();
    const qint64 steps = qint64(option->maximum) - option->minimum;
    int thumb = length;
    if (steps > 0) {
        const qint64 page = qMax(0, option->pageStep);
        thumb = int(page * length / (steps + page));
        thumb = qMin(length, qMax(thumb, SCROLL_MIN_THUMB));
    }
    const int start =
        QStyle::sliderPositionFromValue(option->minimum, option->maximum, option->sliderPosition,
                                        length - thumb, option->upsideDown);
    const auto along = [&bar, horizontal](int from, int size) {
        return horizontal ? QRect(bar.left() + from, bar.top(), size, bar.height())
                          : QRect(bar.left(), bar.top() + from, bar.width(), size);
    };
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return bar;
    case QStyle::SC_ScrollBarSlider:
        return along(start, thumb);
    case QStyle::SC_ScrollBarSubPage:
        return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(start + thumb, length - start - thumb);
    default:
        return QRect();
    }
}

void StyleBars::drawScrollBar(const QStyleOptionSlider *option, QPainter *painter)
{
    painter->fillRect(option->rect, of(KitColour::WINDOW_DARK));
    if (option->maximum <= option->minimum || !(option->state & QStyle::State_Enabled)) {
        return;
    }
    const bool held = option->activeSubControls & QStyle::SC_ScrollBarSlider
        && option->state & QStyle::State_Sunken;
    BoxLook thumb;
    thumb.borderWidth = 0;
    thumb.radius = BAR_RADIUS;
    thumb.background = of(held || option->state & QStyle::State_MouseOver ? KitColour::THUMB_HOVER
                                                                          : KitColour::THUMB);
    const bool horizontal = option->orientation == Qt::Horizontal;
    const int dx = horizontal ? 1 : THUMB_INSET;
    const int dy = horizontal ? THUMB_INSET : 1;
    BoxPainter::draw(
        painter, scrollPart(option, QStyle::SC_ScrollBarSlider).adjusted(dx, dy, -dx, -dy), thumb);
}

void StyleBars::drawSplitter(const QStyleOption *option, QPainter *painter)
{
    const bool active = option->state & (QStyle::State_MouseOver | QStyle::State_Sunken);
    const QRect &box = option->rect;
    // The handle of a horizontal splitter is a vertical line.
    const QRect line = option->state & QStyle::State_Horizontal
        ? QRect(box.center().x(), box.top(), 1, box.height())
        : QRect(box.left(), box.center().y(), box.width(), 1);
    painter->fillRect(line, of(active ? KitColour::ACCENT : KitColour::LINE));
}

void StyleBars::drawProgressGroove(const QStyleOption *option, QPainter *painter)
{
    BoxLook look;
    look.background = of(KitColour::BASE);
    look.border = of(KitColour::FRAME);
    look.radius = BAR_RADIUS;
    BoxPainter::draw(painter, option->rect, look);
}

bool StyleBars::drawProgressContents(const QStyleOptionProgressBar *option, QPainter *painter)
{
    const qint64 range = qint64(option->maximum) - option->minimum;
    if (range <= 0) {
        return false;
    }
    const qint64 done = qBound<qint64>(0, qint64(option->progress) - option->minimum, range);
    QRect inside = option->rect.adjusted(1, 1, -1, -1);
    const bool horizontal = option->state & QStyle::State_Horizontal;
    const int length = int((horizontal ? inside.width() : inside.height()) * done / range);
    if (length <= 0) {
        return true;
    }
    if (horizontal) {
        inside = option->invertedAppearance
            ? inside.adjusted(inside.width() - length, 0, 0, 0)
            : QRect(inside.topLeft(), QSize(length, inside.height()));
    } else {
        inside.setTop(inside.bottom() + 1 - length);
    }
    BoxLook look;
    look.borderWidth = 0;
    look.radius = qMin(2, length / 2);
    look.background =
        of(option->state & QStyle::State_Enabled ? KitColour::ACCENT : KitColour::BUTTON_DISABLED);
    BoxPainter::draw(painter, inside, look);
    return true;
}
