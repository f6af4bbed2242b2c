#include "view/VexaPropertySpinBox.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <QToolTip>

#include <algorithm>
#include <limits>

namespace {

bool isNumber(const QString &strText)
{
    const int nSign = strText.startsWith(QLatin1Char('-')) ? 1 : 0;
    return strText.size() > nSign
        && std::all_of(strText.cbegin() + nSign, strText.cend(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

} // namespace

VexaPropertySpinBox::VexaPropertySpinBox(QWidget *parent)
    : CustomSpinBox(2, parent)
{
}

void VexaPropertySpinBox::setLimits(int nMinimum, int nMaximum, qint64 nStep)
{
    setRange(nMinimum, nMaximum);
    setSingleStep(int(qBound<qint64>(1, nStep, std::numeric_limits<int>::max())));
    updateToolTip();
}

void VexaPropertySpinBox::snapValue(int nValue)
{
    m_bOwnText = false;
    m_bOwnTextReplaced = false;
    setValue(snapped(nValue));
    lineEdit()->setText(textFromValue(value()));
    m_nLastAccepted = value();
}

int VexaPropertySpinBox::snapped(int nValue) const
{
    if (nValue <= minimum()) {
        return minimum();
    }
    const qint64 nHeld = qMin(nValue, maximum());
    return int(nHeld - (nHeld - minimum()) % singleStep());
}

void VexaPropertySpinBox::showText(const QString &strText)
{
    m_bOwnText = true;
    m_bOwnTextReplaced = false;
    m_strOwnText = strText;
    m_nLastAccepted = value();
    lineEdit()->setText(strText);
}

bool VexaPropertySpinBox::isChanged() const
{
    return m_bOwnText ? m_bOwnTextReplaced || value() != m_nLastAccepted
                      : snapped(value()) != m_nLastAccepted;
}

void VexaPropertySpinBox::rollback()
{
    m_bOwnTextReplaced = false;
    setValue(m_nLastAccepted);
    lineEdit()->setText(textFromValue(value()));
}

void VexaPropertySpinBox::onTextEdited(const QString &strText)
{
    m_bOwnTextReplaced = m_bOwnText && strText != m_strOwnText && lineEdit()->hasAcceptableInput();
}

bool VexaPropertySpinBox::takeBackRefused()
{
    if (!lineEdit()->isModified() || lineEdit()->hasAcceptableInput()) {
        return false;
    }
    rollback();
    showLimits();
    return true;
}

void VexaPropertySpinBox::showLimits()
{
    // Later, since the change of focus that often brings it here would hide it.
    QTimer::singleShot(0, this, [this] {
        if (isVisible()) {
            QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this);
        }
    });
}

void VexaPropertySpinBox::changeEvent(QEvent *event)
{
    CustomSpinBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        updateToolTip();
    }
}

void VexaPropertySpinBox::focusInEvent(QFocusEvent *event)
{
    // Not before somebody types: there are thousands of boxes.
    connect(lineEdit(), &QLineEdit::textEdited, this, &VexaPropertySpinBox::onTextEdited,
            Qt::UniqueConnection);
    connect(lineEdit(), &QLineEdit::inputRejected, this, &VexaPropertySpinBox::showLimits,
            Qt::UniqueConnection);
    CustomSpinBox::focusInEvent(event);
}

void VexaPropertySpinBox::focusOutEvent(QFocusEvent *event)
{
    // The own menu or another window on top ends no typing.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        takeBackRefused();
    }
    CustomSpinBox::focusOutEvent(event);
}

void VexaPropertySpinBox::keyPressEvent(QKeyEvent *event)
{
    const bool bEnds = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && cHasUserText()) {
        rollback();
        event->accept();
        return;
    }
    if (bEnds && takeBackRefused()) {
        event->accept();
        return;
    }
    CustomSpinBox::keyPressEvent(event);
}

QString VexaPropertySpinBox::textFromValue(int nValue) const
{
    return m_bOwnText && !m_bOwnTextReplaced && nValue == m_nLastAccepted
        ? m_strOwnText
        : CustomSpinBox::textFromValue(nValue);
}

int VexaPropertySpinBox::valueFromText(const QString &strText) const
{
    return m_bOwnText && strText == m_strOwnText ? m_nLastAccepted
                                                 : CustomSpinBox::valueFromText(strText);
}

QValidator::State VexaPropertySpinBox::validate(QString &strInput, int &nPosition) const
{
    // Otherwise the arrows would do nothing while the own text stands.
    if (m_bOwnText && strInput == m_strOwnText) {
        return QValidator::Acceptable;
    }
    const QValidator::State eState = CustomSpinBox::validate(strInput, nPosition);
    // A number that is too large is refused as a whole: without its last digit it would be another one.
    return eState == QValidator::Invalid && isNumber(strInput) ? QValidator::Intermediate : eState;
}

void VexaPropertySpinBox::updateToolTip()
{
    setToolTip(tr("Min:%1; Max:%2; Step Value:%3").arg(minimum()).arg(maximum()).arg(singleStep()));
}
