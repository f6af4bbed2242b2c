#include "editors/VexaHorSpinBox.h"

#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomPushButton.h"

#include <QHBoxLayout>

namespace {

constexpr int BUTTON_SIZE = 28; // pixels
constexpr int EDIT_HEIGHT = 30; // pixels
constexpr int GAP = 2; // pixels

CustomPushButton *makeButton(const QString &strText, QWidget *pParent)
{
    auto *const pButton = new CustomPushButton(2, strText, pParent);
    pButton->setFixedSize(BUTTON_SIZE, BUTTON_SIZE);
    pButton->setAccessibleName(strText);
    return pButton;
}

} // namespace

VexaHorSpinBox::VexaHorSpinBox(QWidget *parent)
    : CustomWidget(parent)
    , m_pMinusButton(makeButton(QStringLiteral("-"), this))
    , m_pPlusButton(nullptr)
    , m_pEdit(new CustomLineEdit(1, this))
{
    m_pPlusButton = makeButton(QStringLiteral("+"), this); // after the edit, for the tab key
    m_pEdit->setFixedHeight(EDIT_HEIGHT);
    m_pEdit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *const pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pMinusButton);
    pLayout->addSpacing(GAP);
    pLayout->addWidget(m_pEdit);
    pLayout->addSpacing(GAP);
    pLayout->addWidget(m_pPlusButton);
    pLayout->addStretch();
    setFocusProxy(m_pEdit);
    connect(m_pMinusButton, &QAbstractButton::clicked, this, [this] { OnMinusClicked(); });
    connect(m_pPlusButton, &QAbstractButton::clicked, this, [this] { OnPlusClicked(); });
    connect(m_pEdit, &QLineEdit::editingFinished, this, &VexaHorSpinBox::onEditingFinished);
    showValue();
    updateButtons();
}

void VexaHorSpinBox::setRange(qint64 min, qint64 max)
{
    if (max < min) {
        return;
    }
    m_nMinimum = min;
    m_nMaximum = max;
    setValue(qBound(min, m_nValue, max));
}

void VexaHorSpinBox::setValue(qint64 value)
{
    m_nValue = value;
    updateButtons();
    if (!isTyping()) {
        showValue();
    }
}

void VexaHorSpinBox::setStep(qint64 step)
{
    m_nStep = step;
}

void VexaHorSpinBox::OnMinusClicked()
{
    // The sum could leave the range of the type.
    qint64 nValue = 0;
    moveTo(__builtin_sub_overflow(m_nValue, m_nStep, &nValue) ? m_nMinimum : nValue);
}

void VexaHorSpinBox::OnPlusClicked()
{
    qint64 nValue = 0;
    moveTo(__builtin_add_overflow(m_nValue, m_nStep, &nValue) ? m_nMaximum : nValue);
}

void VexaHorSpinBox::moveTo(qint64 value)
{
    m_nValue = qBound(m_nMinimum, value, m_nMaximum);
    updateButtons();
    showValue();
}

void VexaHorSpinBox::onEditingFinished()
{
    if (!m_pEdit->isModified()) {
        return; // the focus came and went
    }
    bool bNumber = false;
    const qint64 nTyped = m_pEdit->text().trimmed().toLongLong(&bNumber);
    const qint64 nBefore = m_nValue;
    moveTo(bNumber ? nTyped : nBefore);
    if (m_nValue != nBefore) {
        emit SigValueTyped();
    }
}

void VexaHorSpinBox::updateButtons()
{
    m_pMinusButton->setEnabled(!m_bLocked && m_nValue > m_nMinimum);
    m_pPlusButton->setEnabled(!m_bLocked && m_nValue < m_nMaximum);
}

void VexaHorSpinBox::setLocked(bool locked)
{
    m_bLocked = locked;
    updateButtons();
}

void VexaHorSpinBox::giveUp()
{
    if (m_pEdit->isModified()) {
        showValue();
    }
}

bool VexaHorSpinBox::isTyping() const
{
    return m_pEdit->hasFocus() && m_pEdit->isModified();
}

void VexaHorSpinBox::showValue()
{
    m_pEdit->setText(QString::number(m_nValue)); // takes the mark of an edit away
}
