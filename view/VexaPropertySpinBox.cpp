#include "view/VexaPropertySpinBox.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <limits>

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
    setValue(nValue);
    const qint64 nShown = value();
    qint64 nSnapped = nShown - (nShown - minimum()) % singleStep();
    if (nShown <= minimum()) {
        nSnapped = minimum();
    } else if (nShown > maximum()) {
        nSnapped = maximum();
    }
    setValue(int(nSnapped));
    lineEdit()->setText(textFromValue(value()));
    m_nLastAccepted = value();
}

void VexaPropertySpinBox::showText(const QString &strText)
{
    m_bOwnText = true;
    m_strOwnText = strText;
    m_nLastAccepted = value();
    lineEdit()->setText(strText);
}

void VexaPropertySpinBox::showBlank()
{
    showText(QString());
}

void VexaPropertySpinBox::rollback()
{
    setValue(m_nLastAccepted);
    lineEdit()->setText(textFromValue(value()));
}

void VexaPropertySpinBox::changeEvent(QEvent *event)
{
    CustomSpinBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        updateToolTip();
    }
}

void VexaPropertySpinBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && cHasUserText()) {
        rollback();
        event->accept();
        return;
    }
    CustomSpinBox::keyPressEvent(event);
}

QString VexaPropertySpinBox::textFromValue(int nValue) const
{
    return m_bOwnText && nValue == m_nLastAccepted ? m_strOwnText
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
    return m_bOwnText && strInput == m_strOwnText ? QValidator::Acceptable
                                                  : CustomSpinBox::validate(strInput, nPosition);
}

void VexaPropertySpinBox::updateToolTip()
{
    setToolTip(tr("Min:%1; Max:%2; Step Value:%3").arg(minimum()).arg(maximum()).arg(singleStep()));
}
