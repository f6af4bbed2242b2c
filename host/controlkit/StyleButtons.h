#pragma once

#include <QStyleOption>

class QPainter;
class QStyle;
class QWidget;

/// Push buttons, tool buttons, check boxes, switches, radio buttons.
namespace StyleButtons {

constexpr int SWITCH_WIDTH = 36;
constexpr int SWITCH_HEIGHT = 18;
constexpr int INDICATOR = 16;

void drawBevel(const QStyleOptionButton *option, QPainter *painter, const QWidget *widget);
void drawLabel(const QStyleOptionButton *option, QPainter *painter, const QWidget *widget);
/// True when the widget is a check box that shows as a switch and was drawn.
bool drawSwitch(const QStyleOptionButton *option, QPainter *painter, const QWidget *widget);
void drawCheckIndicator(const QStyleOption *option, QPainter *painter);
void drawRadioIndicator(const QStyleOption *option, QPainter *painter);
void drawToolPanel(const QStyleOption *option, QPainter *painter);

} // namespace StyleButtons
