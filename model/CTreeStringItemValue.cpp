#include "model/CTreeStringItemValue.h"

CTreeStringItemValue::CTreeStringItemValue() = default;
CTreeStringItemValue::CTreeStringItemValue(const CTreeStringItemValue &other) = default;
CTreeStringItemValue &CTreeStringItemValue::operator=(const CTreeStringItemValue &other) = default;
CTreeStringItemValue::~CTreeStringItemValue() = default;

QString CTreeStringItemValue::displayValue() const
{
    return m_strValue;
}

QVariant CTreeStringItemValue::value() const
{
    return m_strValue;
}

void CTreeStringItemValue::setValue(const QVariant &value)
{
    m_strValue = value.toString();
}

QString CTreeStringItemValue::createCurrentStauts(bool bReadOnly)
{
    return CTreeItemValue::createCurrentStauts(bReadOnly) + displayValue();
}

void CTreeStringItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    CTreeItemValue::copy(pSource, bCopyBase);
    if (const auto *pOther = dynamic_cast<const CTreeStringItemValue *>(pSource)) {
        m_nMaxLength = pOther->m_nMaxLength;
        m_strValue = pOther->m_strValue;
    }
}
