#pragma once

#include "model/CTreeItemValue.h"

/// Value of a Boolean node (GenICam IBoolean).
class FEATURETREEMODULE_API CTreeBooleanItemValue : public CTreeItemValue
{
public:
    CTreeBooleanItemValue();
    CTreeBooleanItemValue(const CTreeBooleanItemValue &other);
    CTreeBooleanItemValue &operator=(const CTreeBooleanItemValue &other);
    ~CTreeBooleanItemValue() override;

    QString displayValue() const override;
    QVariant value() const override;
    void setValue(const QVariant &value) override;
    QString createCurrentStauts(bool bReadOnly) override;
    void copy(CTreeItemValue *pSource, bool bCopyBase) override;

    bool m_bValue = false;
};
