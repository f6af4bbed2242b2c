#pragma once

#include "model/CTreeItemValue.h"

/// "CustomFormatEdit": a format string as a plain text row. It copies from the string value of the format node.
class CTreeFormatStringItemValue : public CTreeItemValue
{
public:
    QString displayValue() const override { return m_strValue; }
    QVariant value() const override { return QVariant(m_strValue); }
    void setValue(const QVariant &value) override { m_strValue = value.toString(); }
    QString createCurrentStauts(bool bReadOnly) override;
    void copy(CTreeItemValue *pSource, bool bCopyBase) override;

    int m_nCameraID = -1;
    int m_nMaxLength = 0; ///< of the string value
    QString m_strFormatNode; ///< node that holds the format string
    QString m_strCustomNode; ///< the "Custom_" name of m_strFormatNode
    QString m_strValue;
};
