#include "host/controlkit/StyleViews.h"

#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"
#include "host/controlkit/KitIcons.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace {

using KitColour::of;

constexpr int CHEVRON = 14;

QRect centred(const QRect &area, int size)
{
    return QRect(area.left() + (area.width() - size) / 2, area.top() + (area.height() - size) / 2,
                 size, size);
}

/// Transparent when the row is drawn as any other.
QColor rowColour(const QStyleOption *option, const QWidget *widget)
{
    const bool selected = option->state & QStyle::State_Selected;
    const bool hover =
        (option->state & QStyle::State_MouseOver) && (option->state & QStyle::State_Enabled);
    if (selected && widget && widget->inherits("QComboBoxListView")) {
        return of(KitColour::ITEM_SELECTED);
    }
    return of(selected ? KitColour::ROW_SELECTED : hover ? KitColour::ROW_HOVER : 0x00000000);
}

QColor menuTextColour(const QStyleOption *option)
{
    return of(option->state & QStyle::State_Enabled ? KitColour::TEXT_BRIGHT
                                                    : KitColour::TEXT_DISABLED);
}

void drawMenuText(const QStyleOptionMenuItem *option, QPainter *painter, const QRect &area)
{
    const int tab = option->text.indexOf(QLatin1Char('\t'));
    constexpr int FLAGS = int(Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextHideMnemonic;
    painter->save();
    painter->setFont(option->font);
    painter->setPen(menuTextColour(option));
    painter->drawText(area, FLAGS | int(Qt::AlignLeft), option->text.left(tab));
    if (tab >= 0) {
        painter->setPen(of(KitColour::TEXT_HINT));
        painter->drawText(area, FLAGS | int(Qt::AlignRight), option->text.mid(tab + 1));
    }
    painter->restore();
}

} // namespace

void StyleViews::drawItemPanel(const QStyleOptionViewItem *option, QPainter *painter,
                               const QWidget *widget)
{
    if (option->backgroundBrush.style() != Qt::NoBrush) {
        painter->fillRect(option->rect, option->backgroundBrush);
    }
    const QColor colour = rowColour(option, widget);
    if (colour.alpha() > 0) {
        painter->fillRect(option->rect, colour);
    }
}

void StyleViews::drawRowPanel(const QStyleOptionViewItem *option, QPainter *painter,
                              const QWidget *widget)
{
    if (option->features & QStyleOptionViewItem::Alternate) {
        painter->fillRect(option->rect, option->palette.brush(QPalette::AlternateBase));
    }
    // The cells draw their own selection; this is the strip that the branches stand on.
    if (option->state & QStyle::State_Selected && option->showDecorationSelected) {
        painter->fillRect(option->rect, rowColour(option, widget));
    }
}

void StyleViews::drawBranch(const QStyleOption *option, QPainter *painter)
{
    if (!(option->state & QStyle::State_Children)) {
        return;
    }
    const bool open = option->state & QStyle::State_Open;
    const bool hover = option->state & QStyle::State_MouseOver;
    KitIcons::draw(painter, centred(option->rect, CHEVRON),
                   KitIcons::path(open ? "arrow_down" : "arrow_right"),
                   of(hover ? KitColour::TEXT_BRIGHT : KitColour::TEXT));
}

void StyleViews::drawHeaderSection(const QStyleOptionHeader *option, QPainter *painter)
{
    const bool hover =
        (option->state & QStyle::State_MouseOver) && (option->state & QStyle::State_Enabled);
    painter->fillRect(option->rect, of(hover ? KitColour::WINDOW : KitColour::WINDOW_DARK));
    const QRect &box = option->rect;
    painter->fillRect(QRect(box.left(), box.bottom(), box.width(), 1), of(KitColour::LINE));
    painter->fillRect(QRect(box.right(), box.top(), 1, box.height()), of(KitColour::LINE));
}

void StyleViews::drawTabShape(const QStyleOptionTab *option, QPainter *painter)
{
    const bool selected = option->state & QStyle::State_Selected;
    const bool hover =
        (option->state & QStyle::State_MouseOver) && (option->state & QStyle::State_Enabled);
    const QRect &box = option->rect;
    if (selected || hover) {
        painter->fillRect(box, of(selected ? KitColour::ROW_SELECTED : KitColour::ROW_HOVER));
    }
    if (!selected) {
        return;
    }
    constexpr int THICK = 2;
    QRect mark(box.left(), box.bottom() + 1 - THICK, box.width(), THICK);
    switch (option->shape) {
    case QTabBar::RoundedSouth:
    case QTabBar::TriangularSouth:
        mark = QRect(box.left(), box.top(), box.width(), THICK);
        break;
    case QTabBar::RoundedWest:
    case QTabBar::TriangularWest:
        mark = QRect(box.right() + 1 - THICK, box.top(), THICK, box.height());
        break;
    case QTabBar::RoundedEast:
    case QTabBar::TriangularEast:
        mark = QRect(box.left(), box.top(), THICK, box.height());
        break;
    default:
        break;
    }
    painter->fillRect(mark, of(KitColour::ACCENT));
    if ((option->state & QStyle::State_HasFocus)
        && (option->state & QStyle::State_KeyboardFocusChange)) {
        BoxPainter::drawFocus(painter, box, 1, 0);
    }
}

void StyleViews::drawMenuPanel(const QStyleOption *option, QPainter *painter)
{
    BoxLook look;
    look.background = of(KitColour::POPUP);
    look.border = of(KitColour::FRAME);
    look.radius = 0;
    BoxPainter::draw(painter, option->rect, look);
}

void StyleViews::drawMenuItem(const QStyleOptionMenuItem *option, QPainter *painter)
{
    const QRect &box = option->rect;
    if (option->menuItemType == QStyleOptionMenuItem::Separator) {
        painter->fillRect(QRect(box.left() + 8, box.center().y(), box.width() - 16, 1),
                          of(KitColour::FRAME));
        return;
    }
    const bool enabled = option->state & QStyle::State_Enabled;
    if (enabled && (option->state & QStyle::State_Selected)) {
        painter->fillRect(box.adjusted(1, 0, -1, 0), of(KitColour::ITEM_SELECTED));
    }
    const QRect left(box.left(), box.top(), MENU_LEFT, box.height());
    if (option->checkType != QStyleOptionMenuItem::NotCheckable && option->checked) {
        KitIcons::draw(painter, centred(left, 16), KitIcons::path("check"), menuTextColour(option));
    } else if (!option->icon.isNull()) {
        option->icon.paint(painter, centred(left, 16), Qt::AlignCenter,
                           enabled ? QIcon::Normal : QIcon::Disabled);
    }
    drawMenuText(option, painter, box.adjusted(MENU_LEFT, 0, -MENU_RIGHT, 0));
    if (option->menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QRect right(box.right() + 1 - MENU_RIGHT, box.top(), MENU_RIGHT, box.height());
        KitIcons::draw(painter, centred(right, CHEVRON), KitIcons::path("arrow_right"),
                       menuTextColour(option));
    }
}

void StyleViews::drawMenuBarItem(const QStyleOptionMenuItem *option, QPainter *painter)
{
    painter->fillRect(option->rect, of(KitColour::WINDOW_DARK));
    if (option->state & QStyle::State_Selected) {
        painter->fillRect(option->rect, of(KitColour::ROW_SELECTED));
    }
    painter->save();
    painter->setPen(menuTextColour(option));
    painter->drawText(option->rect,
                      int(Qt::AlignCenter) | Qt::TextSingleLine | Qt::TextHideMnemonic,
                      option->text);
    painter->restore();
}

void StyleViews::drawToolTipPanel(const QStyleOption *option, QPainter *painter)
{
    BoxLook look;
    look.background = of(KitColour::POPUP);
    look.border = of(KitColour::BORDER);
    look.radius = 0;
    BoxPainter::draw(painter, option->rect, look);
}
