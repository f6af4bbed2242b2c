#include "model/CTreeBooleanItemValue.h"

CTreeBooleanItemValue::CTreeBooleanItemValue() = default;
CTreeBooleanItemValue::CTreeBooleanItemValue(const CTreeBooleanItemValue &other) = default;
CTreeBooleanItemValue &CTreeBooleanItemValue::operator=(const CTreeBooleanItemValue &other) =
    default;
CTreeBooleanItemValue::~CTreeBooleanItemValue() = default;

QString CTreeBooleanItemValue::displayValue() const
{
    return m_bValue ? QStringLiteral("True") : QStringLiteral("False");
}

QVariant CTreeBooleanItemValue::value() const
{
    return m_bValue;
}

void CTreeBooleanItemValue::setValue(const QVariant &value)
{
    m_bValue = value.toBool();
}

QString CTreeBooleanItemValue::createCurrentStauts(bool bReadOnly)
{
    return CTreeItemValue::createCurrentStauts(bReadOnly) + displayValue();
}

void CTreeBooleanItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    CTreeItemValue::copy(pSource, bCopyBase);
    if (const auto *pOther = dynamic_cast<const CTreeBooleanItemValue *>(pSource)) {
        m_bValue = pOther->m_bValue;
    }
}
