#pragma once

#include "model/CTreeItemValue.h"

#include <QList>
#include <QString>

class VexaPropertyTreeItem;

// Values of rows with custom tags. They keep their state in their fields; the editors read them directly. Pointers to
// items are not owned.

/// "CustomDrawFeatureTag": a region that is drawn on the image.
class CTreeCustomDrawItemValue : public CTreeItemValue
{
public:
    /// Takes over the names and the draw kind only.
    void copy(CTreeItemValue *pSource, bool bCopyBase) override
    {
        CTreeItemValue::copy(pSource, bCopyBase);
        if (const auto *source = dynamic_cast<const CTreeCustomDrawItemValue *>(pSource)) {
            m_nDrawType = source->m_nDrawType;
        }
    }

    bool m_bDrawOn = false;
    bool m_bDrawEnable = true;
    bool m_bDrawVisible = true;
    int m_nDrawType = 0;
    int m_nCameraID = -1;
};

/// "CustomWatermarkFeatureTag": two nodes on one row; column 0 is the first, any other the second.
class CTreeCustomWaterMarkItemValue : public CTreeItemValue
{
public:
    QString nodeName(int nColumn) const override { return nColumn == 0 ? m_strFirstNodeName : m_strSecondNodeName; }
    QString toolTip(int nColumn) const override { return nColumn == 0 ? m_strFirstToolTip : m_strSecondToolTip; }

    int m_nFirstValue = 0;
    int m_nSecondValue = 0;
    QString m_strFirstNodeName;
    QString m_strSecondNodeName;
    QString m_strFirstToolTip;
    QString m_strSecondToolTip;
};

/// "CustomAlgorithmCodeTag": a row without an editor of its own.
class CTreeCustomAlgorithmCodeItemValue : public CTreeItemValue
{
public:
    int m_nCurrentCode = 0;
    int m_bEnable = 1;
    QList<int> m_codes;
    QList<QString> m_codeNames;
    QList<QString> m_codeNodes;
};

/// "CustomLightingSelector": the segments of a ring light.
class CTreeCustomLightingSelectorItemValue : public CTreeItemValue
{
public:
    int m_nCameraID = -1;
    int m_nReserved = 0;
    int m_nLightingType = 0; ///< 2 with three entries of "LightingSelector", 0 with four, 1 with six
    VexaPropertyTreeItem *m_pSelectorItem = nullptr;
    VexaPropertyTreeItem *m_pEnableItem = nullptr;
    VexaPropertyTreeItem *m_pSharedItems[4] = {nullptr, nullptr, nullptr, nullptr};
    VexaPropertyTreeItem *m_pAllOffItem = nullptr;
    VexaPropertyTreeItem *m_pAllOnItem = nullptr;
};

/// "CustomSpinBox": a number that two commands move.
class CTreeHorSpinBoxItemValue : public CTreeItemValue
{
public:
    int m_nValue = 0;
    int m_nCameraID = -1;
    int m_nStep = 1;
    VexaPropertyTreeItem *m_pMinusItem = nullptr;
    VexaPropertyTreeItem *m_pPlusItem = nullptr;
    VexaPropertyTreeItem *m_pIntegerItem = nullptr;
};

/// "CustomFormatTextEdit": an output format string with its source data.
class CTreeFormatStringTextItemValue : public CTreeItemValue
{
public:
    int m_nCameraID = -1;
    int m_nMaxLength = 0;
    QString m_strValue;
    VexaPropertyTreeItem *m_pSourceDataItem = nullptr;
    VexaPropertyTreeItem *m_pFormatItem = nullptr;
};

/// "CustomScreen": the home page of a device's screen.
class CTreeScreenSelectItemValue : public CTreeItemValue
{
public:
    int m_nCameraID = -1;
    int m_nValue = 1;
};
