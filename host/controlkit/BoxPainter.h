#pragma once

#include "ControlKit/CustomObject.h"
#include "host/controlkit/CustomObjectAttributes.h"

#include <QBrush>
#include <QColor>
#include <QRect>

class QPainter;
class QStyleOption;
class QWidget;

/// How a box is drawn: one background, one border, rounded corners.
struct BoxLook
{
    QBrush background;
    QColor border;
    int borderWidth = 1;
    int radius = 2;
    QString image; ///< drawn over the background
    qreal opacity = 1.0;
};

namespace BoxPainter {

/// The style attributes of a widget; null when it has none.
const CustomObject::Attributes *attributesOf(const QWidget *widget);
Custom::ItemStatus statusOf(const QStyleOption *option);
/// The status of a widget that paints itself.
Custom::ItemStatus statusOf(const QWidget *widget);
/// Puts what the attributes set over the look.
void apply(BoxLook &look, const CustomObject::Attributes *attributes, Custom::ItemStatus status);
/// The text colour that the attributes give, else `otherwise`; a dark one on a light background of theirs.
QColor textColour(const CustomObject::Attributes *attributes, Custom::ItemStatus status,
                  const QColor &otherwise);
/// `font` with the size and family that a state other than the normal one was given.
QFont font(const QFont &font, const CustomObject::Attributes *attributes,
           Custom::ItemStatus status);
void draw(QPainter *painter, const QRect &rect, const BoxLook &look);
/// The frame of the widget that has the keyboard: in the accent colour, or bright around what has that colour itself.
void drawFocus(QPainter *painter, const QRect &rect, int width, int radius, bool onAccent = false);
/// The box of what the user fills in, by its state.
BoxLook fieldLook(const QStyleOption *option);
/// The same box when it is switched on; `disabled` is its colour while it cannot be switched.
BoxLook checkedLook(const QStyleOption *option, QRgb disabled);

} // namespace BoxPainter
