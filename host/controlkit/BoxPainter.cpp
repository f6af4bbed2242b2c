#include "host/controlkit/BoxPainter.h"

#include "host/controlkit/KitColours.h"
#include "host/controlkit/KitIcons.h"

#include <QFont>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace {

/// From here on the bright text of the dark look is lost on a background.
constexpr int LIGHT_GRAY = 170;

constexpr qreal DISABLED_OPACITY = 0.5;

} // namespace

const CustomObject::Attributes *BoxPainter::attributesOf(const QWidget *widget)
{
    const auto *const object = dynamic_cast<const CustomObject *>(widget);
    return object && object->cHasAttributes() ? &object->cAttributes() : nullptr;
}

Custom::ItemStatus BoxPainter::statusOf(const QStyleOption *option)
{
    if (!(option->state & QStyle::State_Enabled)) {
        return Custom::STATUS_DISABLED;
    }
    if (option->state & QStyle::State_Sunken) {
        return Custom::STATUS_PRESSED;
    }
    return option->state & QStyle::State_MouseOver ? Custom::STATUS_HOVER : Custom::STATUS_NORMAL;
}

Custom::ItemStatus BoxPainter::statusOf(const QWidget *widget)
{
    if (!widget->isEnabled()) {
        return Custom::STATUS_DISABLED;
    }
    return widget->testAttribute(Qt::WA_Hover) && widget->underMouse() ? Custom::STATUS_HOVER
                                                                       : Custom::STATUS_NORMAL;
}

void BoxPainter::apply(BoxLook &look, const CustomObject::Attributes *attributes,
                       Custom::ItemStatus status)
{
    if (!attributes) {
        return;
    }
    const QBrush background = attributes->background(status);
    const bool hasBackground = background.style() != Qt::NoBrush;
    if (hasBackground) {
        look.background = background;
    }
    look.image = attributes->image(status);
    if (status == Custom::STATUS_DISABLED && !attributes->hasOwnBackground(status)
        && (hasBackground || !look.image.isEmpty())) {
        look.opacity = DISABLED_OPACITY;
    }
    const CustomObject::Attributes::Border border = attributes->border(status);
    if (border.colour.isValid()) {
        look.border = border.colour;
    }
    if (border.width >= 0) {
        look.borderWidth = border.width;
    }
    const int radius = attributes->radius(status);
    if (radius >= 0) {
        look.radius = radius;
    }
}

QColor BoxPainter::textColour(const CustomObject::Attributes *attributes, Custom::ItemStatus status,
                              const QColor &otherwise)
{
    const QColor own = attributes ? attributes->fontColour(status) : QColor();
    if (own.isValid() || !attributes) {
        return own.isValid() ? own : otherwise;
    }
    // Who sets a light background and nothing else could not be read.
    const QBrush background = attributes->background(status);
    const bool isLight = background.style() == Qt::SolidPattern && background.color().alpha() == 255
        && qGray(background.color().rgb()) > LIGHT_GRAY;
    return isLight ? KitColour::of(KitColour::LINE) : otherwise;
}

QFont BoxPainter::font(const QFont &font, const CustomObject::Attributes *attributes,
                       Custom::ItemStatus status)
{
    if (!attributes || status == Custom::STATUS_NORMAL) {
        return font;
    }
    const CustomObject::Attributes::State &own = attributes->states[status];
    QFont result = font;
    if (own.fontSize > 0) {
        result.setPixelSize(own.fontSize);
    }
    if (!own.family.isEmpty()) {
        result.setFamily(own.family);
    }
    return result;
}

void BoxPainter::draw(QPainter *painter, const QRect &rect, const BoxLook &look)
{
    const bool hasBorder = look.borderWidth > 0 && look.border.alpha() > 0 && look.border.isValid();
    if (rect.isEmpty()
        || (!hasBorder && look.background.style() == Qt::NoBrush && look.image.isEmpty())) {
        return;
    }
    painter->save();
    painter->setOpacity(painter->opacity() * look.opacity);
    painter->setRenderHint(QPainter::Antialiasing, look.radius > 0);
    const qreal half = hasBorder ? look.borderWidth / 2.0 : 0.0;
    painter->setPen(hasBorder ? QPen(look.border, look.borderWidth) : QPen(Qt::NoPen));
    painter->setBrush(look.background);
    const QRectF box = QRectF(rect).adjusted(half, half, -half, -half);
    if (look.radius > 0) {
        painter->drawRoundedRect(box, look.radius, look.radius);
    } else {
        painter->drawRect(box);
    }
    painter->restore();
    KitIcons::draw(painter, rect, look.image, QColor(), look.opacity);
}

BoxLook BoxPainter::fieldLook(const QStyleOption *option)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    const bool hover = option->state & QStyle::State_MouseOver;
    BoxLook look;
    look.background = KitColour::of(!enabled    ? KitColour::BASE_DISABLED
                                        : hover ? KitColour::BASE_HOVER
                                                : KitColour::BASE);
    look.border = KitColour::of(!enabled    ? KitColour::BORDER_DISABLED
                                    : hover ? KitColour::BORDER_HOVER
                                            : KitColour::BORDER);
    return look;
}

BoxLook BoxPainter::checkedLook(const QStyleOption *option, QRgb disabled)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    const bool hover = option->state & QStyle::State_MouseOver;
    BoxLook look;
    look.border = KitColour::of(!enabled    ? disabled
                                    : hover ? KitColour::ACCENT_HOVER
                                            : KitColour::ACCENT);
    look.background = look.border;
    return look;
}

void BoxPainter::drawFocus(QPainter *painter, const QRect &rect, int width, int radius,
                           bool onAccent)
{
    BoxLook frame;
    frame.border = KitColour::of(onAccent ? KitColour::TEXT_BRIGHT : KitColour::ACCENT);
    frame.borderWidth = width;
    frame.radius = radius;
    draw(painter, rect, frame);
}
