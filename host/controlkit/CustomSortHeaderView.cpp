#include "ControlKit/CustomSortHeaderView.h"

#include <QEvent>

CustomSortHeaderView::CustomSortHeaderView(Qt::Orientation orientation, QWidget *parent)
    : QHeaderView(orientation, parent)
    , CustomQssHelper(this)
{
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

CustomSortHeaderView::~CustomSortHeaderView() = default;

void CustomSortHeaderView::changeEvent(QEvent *event)
{
    QHeaderView::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
}
