#include "host/controlkit/StyleButtons.h"

#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomPushButton.h"
#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"
#include "host/controlkit/KitIcons.h"

#include <QIcon>
#include <QPainter>

namespace {

constexpr int LABEL_MARGIN = 6;
constexpr int ICON_GAP = 4;
constexpr int MENU_ARROW = 12;
constexpr int SWITCH_STYLE = 4;
constexpr int ACCENT_STYLE = 1;

using KitColour::of;

/// One colour for each Custom::ItemStatus.
using StatusColours = QRgb[Custom::STATUS_COUNT];
constexpr StatusColours PLAIN = {KitColour::BUTTON, KitColour::BUTTON_HOVER,
                                 KitColour::BUTTON_PRESSED, KitColour::BUTTON_DISABLED};
constexpr StatusColours ACCENT = {KitColour::ACCENT, KitColour::ACCENT_HOVER,
                                  KitColour::ACCENT_PRESSED, KitColour::BUTTON_DISABLED};
constexpr StatusColours FLAT = {0x00000000, KitColour::ROW_SELECTED, KitColour::BUTTON_PRESSED,
                                0x00000000};

bool hasKeyboardFocus(const QStyleOption *option)
{
    return (option->state & QStyle::State_HasFocus)
        && (option->state & QStyle::State_KeyboardFocusChange);
}

bool isAccent(const QStyleOptionButton *option, const QWidget *widget)
{
    const auto *const button = qobject_cast<const CustomPushButton *>(widget);
    return button ? button->cStyle() == ACCENT_STYLE
                  : bool(option->features & QStyleOptionButton::DefaultButton);
}

Custom::ItemStatus buttonStatus(const QStyleOption *option)
{
    const Custom::ItemStatus status = BoxPainter::statusOf(option);
    const bool held = status != Custom::STATUS_DISABLED && (option->state & QStyle::State_On);
    return held ? Custom::STATUS_PRESSED : status;
}

struct LabelPlaces
{
    QRect icon;
    QRect text;
};

/// Icon and text as one group in the middle, in the order that the alignment of the icon asks for.
LabelPlaces places(const QRect &area, const QSize &icon, int textWidth, int textHeight,
                   Qt::Alignment alignment)
{
    if (icon.isEmpty() || textWidth == 0) {
        return {QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, icon, area), area};
    }
    if (alignment & (Qt::AlignTop | Qt::AlignBottom)) {
        const int height = icon.height() + ICON_GAP + textHeight;
        const int top = area.top() + (area.height() - height) / 2;
        const bool iconFirst = alignment & Qt::AlignTop;
        const int iconTop = iconFirst ? top : top + textHeight + ICON_GAP;
        const int textTop = iconFirst ? top + icon.height() + ICON_GAP : top;
        return {QRect(QPoint(area.left() + (area.width() - icon.width()) / 2, iconTop), icon),
                QRect(area.left(), textTop, area.width(), textHeight)};
    }
    const int shownText = qMin(textWidth, area.width() - icon.width() - ICON_GAP);
    const int left = area.left() + (area.width() - icon.width() - ICON_GAP - shownText) / 2;
    const int top = area.top() + (area.height() - icon.height()) / 2;
    if (alignment & Qt::AlignRight) {
        return {QRect(QPoint(left + shownText + ICON_GAP, top), icon),
                QRect(left, area.top(), shownText, area.height())};
    }
    return {QRect(QPoint(left, top), icon),
            QRect(left + icon.width() + ICON_GAP, area.top(), shownText, area.height())};
}

void drawIcon(const QStyleOptionButton *option, QPainter *painter, const QWidget *widget,
              const QRect &rect)
{
    const Custom::ItemStatus status = buttonStatus(option);
    const auto *const button = qobject_cast<const CustomPushButton *>(widget);
    const QString path = button ? button->cIconPath(status) : QString();
    if (!path.isEmpty()) {
        const bool dimmed = status == Custom::STATUS_DISABLED && !button->cHasIcon(status);
        KitIcons::draw(painter, rect, path, QColor(), dimmed ? 0.4 : 1.0);
        return;
    }
    option->icon.paint(painter, rect, Qt::AlignCenter,
                       status == Custom::STATUS_DISABLED ? QIcon::Disabled : QIcon::Normal,
                       option->state & QStyle::State_On ? QIcon::On : QIcon::Off);
}

} // namespace

void StyleButtons::drawBevel(const QStyleOptionButton *option, QPainter *painter,
                             const QWidget *widget)
{
    const Custom::ItemStatus status = buttonStatus(option);
    const bool flat = option->features & QStyleOptionButton::Flat;
    const bool accent = isAccent(option, widget);
    BoxLook look;
    look.background = of((flat ? FLAT : accent ? ACCENT : PLAIN)[status]);
    look.border = of(KitColour::BUTTON_BORDER);
    look.borderWidth = flat || accent ? 0 : 1;
    BoxPainter::apply(look, BoxPainter::attributesOf(widget), status);
    BoxPainter::draw(painter, option->rect, look);
    if (hasKeyboardFocus(option)) {
        BoxPainter::drawFocus(painter, option->rect, 2, look.radius, accent);
    }
}

void StyleButtons::drawLabel(const QStyleOptionButton *option, QPainter *painter,
                             const QWidget *widget)
{
    const Custom::ItemStatus status = buttonStatus(option);
    const CustomObject::Attributes *const attributes = BoxPainter::attributesOf(widget);
    const QColor plain =
        of(status == Custom::STATUS_DISABLED ? KitColour::TEXT_DISABLED : KitColour::TEXT_BRIGHT);
    const QColor colour = BoxPainter::textColour(attributes, status, plain);
    QRect area = option->rect.adjusted(LABEL_MARGIN, 0, -LABEL_MARGIN, 0);
    if (option->features & QStyleOptionButton::HasMenu) {
        KitIcons::draw(painter,
                       QRect(area.right() - MENU_ARROW + 1, area.center().y() - MENU_ARROW / 2 + 1,
                             MENU_ARROW, MENU_ARROW),
                       KitIcons::path("arrow_down"), colour);
        area.setRight(area.right() - MENU_ARROW);
    }
    painter->save();
    painter->setFont(BoxPainter::font(painter->font(), attributes, status));
    painter->setPen(colour);
    const QFontMetrics metrics(painter->font());
    const auto *const button = qobject_cast<const CustomPushButton *>(widget);
    const QSize iconSize = option->icon.isNull() ? QSize() : option->iconSize;
    const LabelPlaces place =
        places(area, iconSize, metrics.size(Qt::TextShowMnemonic, option->text).width(),
               metrics.height(), button ? button->cIconAlign() : Qt::AlignLeft);
    if (!option->icon.isNull()) {
        drawIcon(option, painter, widget, place.icon);
    }
    const QString text =
        metrics.elidedText(option->text, Qt::ElideRight, place.text.width(), Qt::TextShowMnemonic);
    painter->drawText(place.text, int(Qt::AlignCenter) | Qt::TextHideMnemonic, text);
    painter->restore();
}

bool StyleButtons::drawSwitch(const QStyleOptionButton *option, QPainter *painter,
                              const QWidget *widget)
{
    const auto *const box = qobject_cast<const CustomCheckBox *>(widget);
    if (!box || box->cStyle() != SWITCH_STYLE) {
        return false;
    }
    const bool enabled = option->state & QStyle::State_Enabled;
    const bool on = option->state & QStyle::State_On;
    const bool undecided = option->state & QStyle::State_NoChange;
    const QRect area = option->rect;
    const QRect track(area.left() + 2, area.top() + (area.height() - SWITCH_HEIGHT) / 2,
                      SWITCH_WIDTH, SWITCH_HEIGHT);

    BoxLook look = on ? BoxPainter::checkedLook(option, KitColour::ACCENT_DISABLED)
                      : BoxPainter::fieldLook(option);
    look.radius = SWITCH_HEIGHT / 2;
    BoxPainter::apply(look, BoxPainter::attributesOf(widget), BoxPainter::statusOf(option));
    BoxPainter::draw(painter, track, look);

    if (!undecided) {
        constexpr int GAP = 3;
        constexpr int KNOB = SWITCH_HEIGHT - 2 * GAP;
        const int left = on ? track.right() + 1 - GAP - KNOB : track.left() + GAP;
        BoxLook knob;
        knob.radius = KNOB / 2;
        knob.borderWidth = 0;
        knob.background = of(!enabled ? (on ? 0xFFB5A79C : KitColour::TEXT_DISABLED)
                                 : on ? 0xFFFFFFFF
                                      : KitColour::TEXT);
        BoxPainter::draw(painter, QRect(left, track.top() + GAP, KNOB, KNOB), knob);
    }
    if (hasKeyboardFocus(option)) {
        BoxPainter::drawFocus(painter, track.adjusted(-2, -2, 2, 2), 2, SWITCH_HEIGHT / 2 + 2, on);
    }
    return true;
}

void StyleButtons::drawCheckIndicator(const QStyleOption *option, QPainter *painter)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    const bool on = option->state & QStyle::State_On;
    const bool partly = option->state & QStyle::State_NoChange;
    const BoxLook look = on || partly ? BoxPainter::checkedLook(option, KitColour::BUTTON_DISABLED)
                                      : BoxPainter::fieldLook(option);
    BoxPainter::draw(painter, option->rect, look);
    const QColor mark = of(enabled ? 0xFFFFFFFF : KitColour::TEXT_DISABLED);
    if (partly) {
        const QRect &box = option->rect;
        painter->fillRect(QRect(box.left() + 4, box.center().y(), box.width() - 8, 2), mark);
    } else if (on) {
        KitIcons::draw(painter, option->rect, KitIcons::path("check"), mark);
    }
    if (hasKeyboardFocus(option)) {
        BoxPainter::drawFocus(painter, option->rect, 2, look.radius, on || partly);
    }
}

void StyleButtons::drawRadioIndicator(const QStyleOption *option, QPainter *painter)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    BoxLook ring = BoxPainter::fieldLook(option);
    ring.radius = option->rect.width() / 2;
    BoxPainter::draw(painter, option->rect, ring);
    if (option->state & QStyle::State_On) {
        BoxLook dot;
        dot.borderWidth = 0;
        const QRect place = option->rect.adjusted(4, 4, -4, -4);
        dot.radius = place.width() / 2;
        dot.background = of(enabled ? KitColour::ACCENT : KitColour::TEXT_DISABLED);
        BoxPainter::draw(painter, place, dot);
    }
    if (hasKeyboardFocus(option)) {
        BoxPainter::drawFocus(painter, option->rect, 2, ring.radius);
    }
}

void StyleButtons::drawToolPanel(const QStyleOption *option, QPainter *painter)
{
    BoxLook look;
    look.borderWidth = 0;
    look.background = of(FLAT[buttonStatus(option)]);
    BoxPainter::draw(painter, option->rect, look);
    if (hasKeyboardFocus(option)) {
        BoxPainter::drawFocus(painter, option->rect, 2, look.radius);
    }
}
