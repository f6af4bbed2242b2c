#pragma once

#include "model/CTreeItemValue.h"

/// Value of a Float node (GenICam IFloat) with its range, in single precision and the node's own unit.
class FEATURETREEMODULE_API CTreeFloatItemValue : public CTreeItemValue
{
public:
    CTreeFloatItemValue();
    CTreeFloatItemValue(const CTreeFloatItemValue &other);
    CTreeFloatItemValue &operator=(const CTreeFloatItemValue &other);
    ~CTreeFloatItemValue() override;

    QString displayValue() const override;
    QVariant value() const override;
    void setValue(const QVariant &value) override;
    QString createCurrentStauts(bool bReadOnly) override;
    void copy(CTreeItemValue *pSource, bool bCopyBase) override;

    float m_fValue = -1.0F;
    float m_fMinValue = -1.0F;
    float m_fMaxValue = -1.0F;
};
