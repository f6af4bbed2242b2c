#include "ControlKit/CustomSpinBox.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWheelEvent>

CustomSpinBox::CustomSpinBox(int style, QWidget *parent)
    : QSpinBox(parent)
    , CustomQssHelper(this)
    , m_nStyle(style)
{
    setFocusPolicy(Qt::StrongFocus); // the wheel gives no focus
    setKeyboardTracking(false);
}

CustomSpinBox::~CustomSpinBox() = default;

QLineEdit *CustomSpinBox::cInterLineEdit() const
{
    return lineEdit();
}

bool CustomSpinBox::cHasUserText() const
{
    // The window's focus widget, not hasFocus(): a menu or another window on top ends no typing.
    return lineEdit()->isModified() && window()->focusWidget() == this;
}

void CustomSpinBox::stepBy(int steps)
{
    const int former = value();
    QSpinBox::stepBy(steps);
    if (value() != former) {
        emit SigSaveParam();
    }
}

void CustomSpinBox::changeEvent(QEvent *event)
{
    QSpinBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
}

// The mark goes before the commit signals come: a refill that they bring, such as the old value after a failed
// write, is to be shown.
void CustomSpinBox::focusOutEvent(QFocusEvent *event)
{
    // The own menu or another window on top ends no typing; the base class would.
    const bool bEnds =
        event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason;
    if (!bEnds && lineEdit()->isModified()) {
        QCoreApplication::sendEvent(lineEdit(), event);
        QWidget::focusOutEvent(event);
        return;
    }
    lineEdit()->setModified(false);
    QSpinBox::focusOutEvent(event);
}

void CustomSpinBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && cHasUserText()) {
        lineEdit()->setText(textFromValue(value()));
        lineEdit()->selectAll();
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        lineEdit()->setModified(false);
    }
    QSpinBox::keyPressEvent(event);
}

void CustomSpinBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus()) {
        QSpinBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}
