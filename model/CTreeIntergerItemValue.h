#pragma once

#include "model/CTreeItemValue.h"

/// Value of an Integer node (GenICam IInteger) with its range.
class FEATURETREEMODULE_API CTreeIntergerItemValue : public CTreeItemValue
{
public:
    /// Integer kinds that the text and the editors work with; the text modes of QPropertyLineEdit.
    enum Kind { KIND_DECIMAL = 2, KIND_HEX = 3, KIND_IPV4 = 4, KIND_MASK = 5, KIND_MAC = 6 };

    CTreeIntergerItemValue();
    CTreeIntergerItemValue(const CTreeIntergerItemValue &other);
    CTreeIntergerItemValue &operator=(const CTreeIntergerItemValue &other);
    ~CTreeIntergerItemValue() override;

    QString displayValue() const override;
    QVariant value() const override;
    void setValue(const QVariant &value) override;
    QString createCurrentStauts(bool bReadOnly) override;
    void copy(CTreeItemValue *pSource, bool bCopyBase) override;

    /// Kind of the integer, from the Representation and the names of network nodes.
    int type() const;

    QString m_strRepresentation; ///< element Representation
    qint64 m_nValue = -1; ///< as the device said it, also outside the range
    qint64 m_nMinValue = -1;
    qint64 m_nMaxValue = -1; ///< below the minimum: the range is empty
    qint64 m_nIncValue = -1;
};
