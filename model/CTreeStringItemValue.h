#pragma once

#include "model/CTreeItemValue.h"

/// Value of a StringReg node (GenICam IString).
class FEATURETREEMODULE_API CTreeStringItemValue : public CTreeItemValue
{
public:
    CTreeStringItemValue();
    CTreeStringItemValue(const CTreeStringItemValue &other);
    CTreeStringItemValue &operator=(const CTreeStringItemValue &other);
    ~CTreeStringItemValue() override;

    QString displayValue() const override;
    QVariant value() const override;
    void setValue(const QVariant &value) override;
    QString createCurrentStauts(bool bReadOnly) override;
    void copy(CTreeItemValue *pSource, bool bCopyBase) override;

    int m_nMaxLength = 0; ///< longest text that the node takes, in bytes
    QString m_strValue;
};
