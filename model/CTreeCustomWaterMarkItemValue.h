#pragma once

#include "model/CTreeItemValue.h"

/// Row of two watermark nodes: column 0 is the first node, any other column the second.
class CTreeCustomWaterMarkItemValue : public CTreeItemValue
{
public:
    QString nodeName(int nColumn) const override;
    QString toolTip(int nColumn) const override;

    int m_nFirstValue = 0;
    int m_nSecondValue = 0;
    QString m_strFirstNodeName;
    QString m_strSecondNodeName;
    QString m_strFirstToolTip;
    QString m_strSecondToolTip;
};
