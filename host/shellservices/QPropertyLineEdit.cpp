#include "ShellServicesModule/QPropertyLineEdit.h"

#include "host/shellservices/RefusalMark.h"
#include "host/shellservices/ValueText.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>

#include <limits>

namespace {
const QColor kRefusedFrame(0xFF, 0x52, 0x52);
constexpr int kRefusedFrameWidth = 2;
} // namespace

class QPropertyLineEdit::Private
{
public:
    QString
        strBase; ///< the text that counts as unmodified: the device's, or the one that was saved last
    QVariant maximum;
    QVariant minimum;
    int nMode = TEXT_STRING;
    int nLength = 0;
    std::unique_ptr<RefusalMark> pRefusal; ///< only while a refusal shows
};

QPropertyLineEdit::QPropertyLineEdit(int style, QWidget *parent)
    : CustomLineEdit(style, parent)
    , d(std::make_unique<Private>())
{
    connect(this, &QLineEdit::inputRejected, this, &QPropertyLineEdit::refuseByValidator);
}

QPropertyLineEdit::~QPropertyLineEdit()
{
    d->pRefusal.reset();
}

/// The window's focus widget, not hasFocus(): a context menu or another window on top ends no typing.
bool QPropertyLineEdit::isTyping() const
{
    return isModified() && window()->focusWidget() == this;
}

void QPropertyLineEdit::SetText(const QString &text, int mode)
{
    if (mode != d->nMode) {
        d->nMode = mode;
        d->maximum.clear();
        d->minimum.clear();
    }
    const bool bTyping = isTyping();
    d->strBase = text;
    if (bTyping) {
        return;
    }
    if (text.size() > maxLength()) {
        setMaxLength(
            std::numeric_limits<int>::max()); // else a long text is cut and then seen as modified
    }
    if (this->text() != text) {
        setText(text);
    }
    setModified(false);
}

void QPropertyLineEdit::SetRange(const QVariant &maximum, const QVariant &minimum)
{
    d->maximum = maximum;
    d->minimum = minimum;
}

void QPropertyLineEdit::SetStringLength(int length)
{
    d->nLength = length;
}

bool QPropertyLineEdit::IsChanged() const
{
    return text() != d->strBase;
}

bool QPropertyLineEdit::SaveProperty(QVariant &value)
{
    const QString strText = text();
    if (strText == d->strBase) {
        setModified(false); // the edit was ended, if only by the same text again
        return false;
    }
    const ValueText::Parsed parsed = ValueText::parse(strText, d->nMode);
    QString strReason = parsed.strReason;
    if (parsed.isValid()) {
        strReason = parsed.value.userType() == QMetaType::QString
            ? ValueText::lengthRefusal(strText, d->nLength)
            : ValueText::rangeRefusal(parsed.value, d->maximum, d->minimum, d->nMode);
    }
    if (!strReason.isEmpty()) {
        refuse(strReason);
        return false;
    }
    value = parsed.value;
    d->strBase = strText;
    setModified(false);
    clearRefusal();
    return true;
}

void QPropertyLineEdit::Rollback()
{
    if (text() != d->strBase) {
        setText(d->strBase);
    }
    setModified(false);
}

void QPropertyLineEdit::refuse(const QString &reason)
{
    d->pRefusal.reset(); // gives the former description back before the new mark notes it
    d->pRefusal = std::make_unique<RefusalMark>(this, reason);
    connect(d->pRefusal.get(), &RefusalMark::expired, this, &QPropertyLineEdit::clearRefusal);
    update();
}

void QPropertyLineEdit::refuseByValidator()
{
    refuse(QCoreApplication::translate("QPropertyLineEdit", "lang_qpropertylineedit_notallowed"));
}

void QPropertyLineEdit::clearRefusal()
{
    if (d->pRefusal) {
        RefusalMark *const pRefusal = d->pRefusal.release();
        pRefusal->end();
        pRefusal->deleteLater(); // it may be the sender
        update();
    }
}

void QPropertyLineEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && text() != d->strBase) {
        Rollback();
        clearRefusal();
        event->accept();
        return;
    }
    const QString strTyped = event->text();
    // Control with Alt is AltGr, which types.
    const bool bShortcut = event->modifiers().testFlag(Qt::ControlModifier)
        && !event->modifiers().testFlag(Qt::AltModifier);
    const bool bPrintable = !bShortcut && !strTyped.isEmpty() && strTyped.at(0).isPrint();
    if (bPrintable && !isReadOnly() && !ValueText::mayHold(d->nMode, strTyped.at(0))) {
        refuse(ValueText::characterRefusal(strTyped.at(0), d->nMode));
        event->accept();
        return;
    }
    const bool bEnds = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (bEnds && IsChanged() && !hasAcceptableInput()) {
        Rollback();
        refuseByValidator();
        event->accept();
        return;
    }
    const QString strBefore = text();
    CustomLineEdit::keyPressEvent(event);
    // Return may have refused the text and taken it back: that mark stays.
    if (bPrintable && text() != strBefore) {
        clearRefusal();
    }
}

void QPropertyLineEdit::focusOutEvent(QFocusEvent *event)
{
    // A menu or another window on top ends no typing.
    const bool bEnds =
        event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason;
    if (bEnds && IsChanged() && !hasAcceptableInput()) {
        Rollback();
        refuseByValidator();
    }
    CustomLineEdit::focusOutEvent(event);
}

void QPropertyLineEdit::paintEvent(QPaintEvent *event)
{
    CustomLineEdit::paintEvent(event);
    if (d->pRefusal) {
        QPainter painter(this);
        painter.setPen(QPen(kRefusedFrame, kRefusedFrameWidth));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}
