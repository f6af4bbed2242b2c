#include "host/controlkit/StyleInputs.h"

#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"
#include "host/controlkit/KitIcons.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QPainter>

namespace {

constexpr int ARROW_ZONE = 22;
constexpr int SPIN_ZONE = 20;
constexpr int ARROW = 14;
constexpr int SPIN_ARROW = 12;
constexpr int ICON_GAP = 4;

using KitColour::of;
using StyleInputs::LINE_EDIT_MARGIN;
using StyleInputs::TEXT_LEFT;

/// Edits show the focus however it came: the typed text goes there.
BoxLook editLook(const QStyleOption *option, const QWidget *widget)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    const bool focused = enabled && (option->state & QStyle::State_HasFocus);
    const bool hover = enabled && (option->state & QStyle::State_MouseOver);
    BoxLook look = BoxPainter::fieldLook(option);
    const Custom::ItemStatus status = !enabled ? Custom::STATUS_DISABLED
        : hover                                ? Custom::STATUS_HOVER
                                               : Custom::STATUS_NORMAL;
    BoxPainter::apply(look, BoxPainter::attributesOf(widget), status);
    if (focused) {
        look.border = of(KitColour::ACCENT);
        look.borderWidth = qMax(1, look.borderWidth);
    }
    return look;
}

void drawArrow(QPainter *painter, const QRect &zone, int size, const char *name, bool enabled)
{
    const QRect place(zone.left() + (zone.width() - size) / 2,
                      zone.top() + (zone.height() - size) / 2, size, size);
    KitIcons::draw(painter, place, KitIcons::path(name),
                   of(enabled ? KitColour::TEXT : KitColour::TEXT_DISABLED));
}

void drawStepper(const QStyleOptionSpinBox *option, QPainter *painter, QStyle::SubControl part)
{
    const bool up = part == QStyle::SC_SpinBoxUp;
    const bool possible = option->stepEnabled
        & (up ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled);
    const bool enabled = (option->state & QStyle::State_Enabled) && possible;
    const QRect zone = StyleInputs::spinPart(option, part);
    if (enabled && option->activeSubControls == part) {
        const bool pressed = option->state & QStyle::State_Sunken;
        painter->fillRect(zone, of(pressed ? KitColour::BUTTON_PRESSED : KitColour::ROW_SELECTED));
    }
    drawArrow(painter, zone, SPIN_ARROW, up ? "arrow_up" : "arrow_down", enabled);
}

} // namespace

void StyleInputs::drawLinePanel(const QStyleOptionFrame *option, QPainter *painter,
                                const QWidget *widget)
{
    const QWidget *const parent = widget ? widget->parentWidget() : nullptr;
    if (qobject_cast<const QAbstractSpinBox *>(parent) || qobject_cast<const QComboBox *>(parent)) {
        return; // the outer box draws frame and background
    }
    if (option->lineWidth <= 0) {
        painter->fillRect(option->rect, option->palette.brush(QPalette::Base));
        return;
    }
    BoxPainter::draw(painter, option->rect, editLook(option, widget));
}

QRect StyleInputs::lineContents(const QStyleOptionFrame *option)
{
    const int width = option->lineWidth;
    const int side = width > 0 ? TEXT_LEFT - LINE_EDIT_MARGIN : 0;
    return option->rect.adjusted(side, width, -side, -width);
}

void StyleInputs::drawTextFrame(const QStyleOption *option, QPainter *painter,
                                const QWidget *widget)
{
    const bool edits =
        widget && (widget->inherits("QTextEdit") || widget->inherits("QPlainTextEdit"));
    BoxLook look;
    look.border =
        of(option->state & QStyle::State_Enabled ? KitColour::FRAME : KitColour::BORDER_DISABLED);
    if (edits) {
        look = editLook(option, widget);
        look.background = Qt::NoBrush;
    }
    look.radius = 0;
    BoxPainter::draw(painter, option->rect, look);
}

void StyleInputs::drawComboBox(const QStyleOptionComboBox *option, QPainter *painter,
                               const QWidget *widget)
{
    if (option->frame) {
        BoxLook look = editLook(option, widget);
        if (option->state & QStyle::State_On) {
            look.border = of(KitColour::ACCENT);
        }
        BoxPainter::draw(painter, option->rect, look);
    }
    if (option->subControls & QStyle::SC_ComboBoxArrow) {
        drawArrow(painter, comboPart(option, QStyle::SC_ComboBoxArrow), ARROW, "arrow_down",
                  option->state & QStyle::State_Enabled);
    }
}

void StyleInputs::drawComboLabel(const QStyleOptionComboBox *option, QPainter *painter,
                                 const QWidget *widget)
{
    QRect area = comboPart(option, QStyle::SC_ComboBoxEditField);
    if (!option->currentIcon.isNull()) {
        const QRect place(QPoint(area.left(), area.center().y() - option->iconSize.height() / 2),
                          option->iconSize);
        option->currentIcon.paint(painter, place, Qt::AlignCenter,
                                  option->state & QStyle::State_Enabled ? QIcon::Normal
                                                                        : QIcon::Disabled);
        area.setLeft(place.right() + ICON_GAP);
    }
    if (option->editable || option->currentText.isEmpty()) {
        return;
    }
    const Custom::ItemStatus status = BoxPainter::statusOf(option);
    const QColor plain = option->palette.color(
        status == Custom::STATUS_DISABLED ? QPalette::Disabled : QPalette::Active, QPalette::Text);
    painter->save();
    painter->setPen(BoxPainter::textColour(BoxPainter::attributesOf(widget), status, plain));
    painter->drawText(
        area, int(Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextSingleLine,
        option->fontMetrics.elidedText(option->currentText, Qt::ElideRight, area.width()));
    painter->restore();
}

void StyleInputs::drawSpinBox(const QStyleOptionSpinBox *option, QPainter *painter,
                              const QWidget *widget)
{
    if (option->frame) {
        BoxPainter::draw(painter, option->rect, editLook(option, widget));
    }
    if (option->buttonSymbols != QAbstractSpinBox::NoButtons) {
        drawStepper(option, painter, QStyle::SC_SpinBoxUp);
        drawStepper(option, painter, QStyle::SC_SpinBoxDown);
    }
}

QRect StyleInputs::comboPart(const QStyleOptionComboBox *option, QStyle::SubControl part)
{
    const QRect &box = option->rect;
    switch (part) {
    case QStyle::SC_ComboBoxEditField:
        return box.adjusted(option->editable ? TEXT_LEFT - LINE_EDIT_MARGIN : TEXT_LEFT, 1,
                            -ARROW_ZONE, -1);
    case QStyle::SC_ComboBoxArrow:
        return QRect(box.right() + 1 - ARROW_ZONE, box.top(), ARROW_ZONE, box.height());
    default:
        return box;
    }
}

QRect StyleInputs::spinPart(const QStyleOptionSpinBox *option, QStyle::SubControl part)
{
    const QRect &box = option->rect;
    const bool hasButtons = option->buttonSymbols != QAbstractSpinBox::NoButtons;
    const QRect zone(box.right() - SPIN_ZONE, box.top() + 1, SPIN_ZONE, box.height() - 2);
    switch (part) {
    case QStyle::SC_SpinBoxEditField:
        return box.adjusted(TEXT_LEFT - LINE_EDIT_MARGIN, 1, hasButtons ? -SPIN_ZONE - 2 : -2, -1);
    case QStyle::SC_SpinBoxUp:
        return hasButtons ? QRect(zone.left(), zone.top(), zone.width(), zone.height() / 2)
                          : QRect();
    case QStyle::SC_SpinBoxDown:
        return hasButtons ? zone.adjusted(0, zone.height() / 2, 0, 0) : QRect();
    default:
        return box;
    }
}
