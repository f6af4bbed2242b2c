#include "model/CTreeFloatItemValue.h"

namespace {

constexpr int SHOWN_DECIMALS = 2;
constexpr int FINGERPRINT_DECIMALS = 3;

QString fixedText(float fValue, int nDecimals)
{
    return QString::number(static_cast<double>(fValue), 'f', nDecimals);
}

} // namespace

CTreeFloatItemValue::CTreeFloatItemValue() = default;
CTreeFloatItemValue::CTreeFloatItemValue(const CTreeFloatItemValue &other) = default;
CTreeFloatItemValue &CTreeFloatItemValue::operator=(const CTreeFloatItemValue &other) = default;
CTreeFloatItemValue::~CTreeFloatItemValue() = default;

QString CTreeFloatItemValue::displayValue() const
{
    return fixedText(m_fValue, SHOWN_DECIMALS);
}

QVariant CTreeFloatItemValue::value() const
{
    return m_fValue;
}

void CTreeFloatItemValue::setValue(const QVariant &value)
{
    m_fValue = value.toFloat();
}

QString CTreeFloatItemValue::createCurrentStauts(bool bReadOnly)
{
    return CTreeItemValue::createCurrentStauts(bReadOnly)
        + QStringLiteral("m_fValue:%1; m_fMinValue:%2; m_fMaxValue:%3")
              .arg(fixedText(m_fValue, FINGERPRINT_DECIMALS),
                   fixedText(m_fMinValue, FINGERPRINT_DECIMALS),
                   fixedText(m_fMaxValue, FINGERPRINT_DECIMALS));
}

void CTreeFloatItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    CTreeItemValue::copy(pSource, bCopyBase);
    if (const auto *pOther = dynamic_cast<const CTreeFloatItemValue *>(pSource)) {
        m_fValue = pOther->m_fValue;
        m_fMinValue = pOther->m_fMinValue;
        m_fMaxValue = pOther->m_fMaxValue;
    }
}
