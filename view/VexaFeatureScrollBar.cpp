#include "view/VexaFeatureScrollBar.h"

#include <QMouseEvent>

VexaFeatureScrollBar::VexaFeatureScrollBar(QWidget *parent)
    : QScrollBar(Qt::Vertical, parent)
    , CustomQssHelper(this)
{
}

void VexaFeatureScrollBar::mousePressEvent(QMouseEvent *event)
{
    QScrollBar::mousePressEvent(event);
    event->ignore();
}

void VexaFeatureScrollBar::mouseMoveEvent(QMouseEvent *event)
{
    QScrollBar::mouseMoveEvent(event);
    event->ignore();
}

void VexaFeatureScrollBar::mouseReleaseEvent(QMouseEvent *event)
{
    QScrollBar::mouseReleaseEvent(event);
    event->ignore();
}
