#include "model/CTreeCustomWaterMarkItemValue.h"

QString CTreeCustomWaterMarkItemValue::nodeName(int nColumn) const
{
    return nColumn == 0 ? m_strFirstNodeName : m_strSecondNodeName;
}

QString CTreeCustomWaterMarkItemValue::toolTip(int nColumn) const
{
    return nColumn == 0 ? m_strFirstToolTip : m_strSecondToolTip;
}
