#include "model/CTreeCustomDrawItemValue.h"

void CTreeCustomDrawItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    CTreeItemValue::copy(pSource, bCopyBase);
    if (const auto *pOther = dynamic_cast<const CTreeCustomDrawItemValue *>(pSource)) {
        m_nDrawType = pOther->m_nDrawType;
    }
}
