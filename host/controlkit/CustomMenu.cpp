#include "ControlKit/CustomMenu.h"

#include <QEvent>

CustomMenu::CustomMenu(QWidget *parent)
    : QMenu(parent)
    , CustomQssHelper(this)
{
}

CustomMenu::~CustomMenu() = default;

void CustomMenu::changeEvent(QEvent *event)
{
    QMenu::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
}
