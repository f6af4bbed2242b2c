#include "model/CTreeCommandItemValue.h"

QString CTreeCommandItemValue::displayValue() const
{
    return m_strButtonText;
}

QVariant CTreeCommandItemValue::value() const
{
    return m_strButtonText;
}

void CTreeCommandItemValue::setValue(const QVariant &value)
{
    m_strButtonText = value.toString();
}
