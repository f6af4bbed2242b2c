#include "ControlKit/CustomComboBox.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QScreen>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QWheelEvent>

CustomComboBox::CustomComboBox(int style, int mode, QWidget *parent)
    : QComboBox(parent)
    , CustomQssHelper(this)
    , m_nStyle(style)
{
    setFocusPolicy(Qt::StrongFocus); // the wheel gives no focus
    if (mode == 1) {
        setEditable(true);
    }
}

CustomComboBox::~CustomComboBox() = default;

void CustomComboBox::showPopup()
{
    if (!qobject_cast<QStyledItemDelegate *>(itemDelegate())) {
        setItemDelegate(new QStyledItemDelegate(this)); // rows as in the kit's other lists
    }
    if (count() > 0) {
        constexpr int PADDING = 16;
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        const int wanted = view()->sizeHintForColumn(modelColumn()) + bar + PADDING;
        view()->setMinimumWidth(qMin(wanted, screen()->availableSize().width() / 2));
    }
    QComboBox::showPopup();
    m_bPopupShown = count() > 0;
}

void CustomComboBox::hidePopup()
{
    QComboBox::hidePopup();
    if (m_bPopupShown) {
        m_bPopupShown = false;
        emit cSigPopupHidden();
    }
}

bool CustomComboBox::cIsPopupShown() const
{
    return m_bPopupShown && view()->isVisible();
}

void CustomComboBox::changeEvent(QEvent *event)
{
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
}

void CustomComboBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}
