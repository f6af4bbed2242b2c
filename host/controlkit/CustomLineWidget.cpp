#include "ControlKit/CustomLineWidget.h"

#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"

#include <QPainter>

CustomLineWidget::CustomLineWidget(QWidget *parent)
    : CustomWidget(parent)
{
    cSetLineType(LINE_HORIZONTAL);
}

CustomLineWidget::~CustomLineWidget() = default;

void CustomLineWidget::cSetLineType(LineType type)
{
    const bool horizontal = type == LINE_HORIZONTAL;
    setMinimumSize(horizontal ? 0 : 1, horizontal ? 1 : 0);
    setMaximumSize(horizontal ? QWIDGETSIZE_MAX : 1, horizontal ? 1 : QWIDGETSIZE_MAX);
    setSizePolicy(horizontal ? QSizePolicy::Expanding : QSizePolicy::Fixed,
                  horizontal ? QSizePolicy::Fixed : QSizePolicy::Expanding);
}

void CustomLineWidget::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    BoxLook look;
    look.background = KitColour::of(KitColour::LINE);
    look.borderWidth = 0;
    look.radius = 0;
    BoxPainter::apply(look, cHasAttributes() ? &cAttributes() : nullptr,
                      BoxPainter::statusOf(this));
    BoxPainter::draw(&painter, rect(), look);
}
