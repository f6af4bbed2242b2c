#include "model/CTreeFormatStringItemValue.h"

#include "model/CTreeStringItemValue.h"
#include "model/CustomNodeNames.h"

QString CTreeFormatStringItemValue::createCurrentStauts(bool bReadOnly)
{
    return CTreeItemValue::createCurrentStauts(bReadOnly) + displayValue();
}

void CTreeFormatStringItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    CTreeItemValue::copy(pSource, bCopyBase);
    const auto *source = dynamic_cast<const CTreeStringItemValue *>(pSource);
    if (!source) {
        return;
    }
    m_nMaxLength = source->m_nMaxLength;
    m_strValue = source->m_strValue;
    m_strFormatNode = source->m_strNodeName;
    m_strCustomNode = customNodeOf(m_strFormatNode);
}
