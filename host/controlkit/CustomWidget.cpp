#include "ControlKit/CustomWidget.h"

#include "host/controlkit/BoxPainter.h"

#include <QPainter>

CustomWidget::CustomWidget(QWidget *parent)
    : QWidget(parent)
    , CustomObject(this)
{
}

CustomWidget::~CustomWidget() = default;

void CustomWidget::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    if (!cHasAttributes()) {
        return;
    }
    QPainter painter(this);
    BoxLook look;
    look.borderWidth = 0;
    look.radius = 0;
    BoxPainter::apply(look, &cAttributes(), BoxPainter::statusOf(this));
    BoxPainter::draw(&painter, rect(), look);
}
