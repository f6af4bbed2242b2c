#pragma once

#include "model/CTreeItemValue.h"

/// Row of a Command node (GenICam ICommand): what its button shows.
class CTreeCommandItemValue : public CTreeItemValue
{
public:
    QString displayValue() const override;
    QVariant value() const override;
    void setValue(const QVariant &value) override;

    QString m_strButtonText;
};
