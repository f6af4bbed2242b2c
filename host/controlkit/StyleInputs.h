#pragma once

#include <QStyle>
#include <QStyleOption>

class QPainter;
class QWidget;

/// Line edits, combo boxes, spin boxes and the frames of text edits.
namespace StyleInputs {

constexpr int MIN_HEIGHT = 28;
/// From the outer edge to the text, the same in line edits, combo boxes and spin boxes.
constexpr int TEXT_LEFT = 6;
/// What QLineEdit adds by itself.
constexpr int LINE_EDIT_MARGIN = 2;

void drawLinePanel(const QStyleOptionFrame *option, QPainter *painter, const QWidget *widget);
/// Where a line edit has its text.
QRect lineContents(const QStyleOptionFrame *option);
void drawTextFrame(const QStyleOption *option, QPainter *painter, const QWidget *widget);
void drawComboBox(const QStyleOptionComboBox *option, QPainter *painter, const QWidget *widget);
void drawComboLabel(const QStyleOptionComboBox *option, QPainter *painter, const QWidget *widget);
void drawSpinBox(const QStyleOptionSpinBox *option, QPainter *painter, const QWidget *widget);
/// Parts of a combo box and of a spin box, laid out from left to right.
QRect comboPart(const QStyleOptionComboBox *option, QStyle::SubControl part);
QRect spinPart(const QStyleOptionSpinBox *option, QStyle::SubControl part);

} // namespace StyleInputs
