#pragma once

#include "model/CTreeItemValue.h"

#include <QList>

class VexaPropertyTreeItem;

// Values that are nothing but fields: the editors of these rows read and write them directly. Items they point at
// belong to the feature tree.

/// Row of the algorithm code.
class CTreeCustomAlgorithmCodeItemValue : public CTreeItemValue
{
public:
    int m_nCurrentCode = 0;
    int m_bEnable = 1;
    QList<int> m_codes;
    QList<QString> m_codeNames;
    QList<QString> m_codeNamesCN;
};

/// Row that selects and switches the lights of a device.
class CTreeCustomLightingSelectorItemValue : public CTreeItemValue
{
public:
    int m_nCameraID = -1;
    int m_nReserved = 0;
    int m_nLightingType = 0; ///< layout: 2 with 3 entries of "LightingSelector", 0 with 4, 1 with 6
    VexaPropertyTreeItem *m_pSelectorItem = nullptr; ///< "LightingSelector"
    VexaPropertyTreeItem *m_pEnableItem = nullptr; ///< "LightingEnable"
    VexaPropertyTreeItem *m_settingItems[4] = {}; ///< settings that the lights share
    VexaPropertyTreeItem *m_pAllOffItem = nullptr; ///< command
    VexaPropertyTreeItem *m_pAllOnItem = nullptr; ///< command
};

/// Row that steps an integer by two commands.
class CTreeHorSpinBoxItemValue : public CTreeItemValue
{
public:
    int m_nValue = 0;
    int m_nCameraID = -1;
    int m_nStep = 1;
    VexaPropertyTreeItem *m_pMinusItem = nullptr; ///< command behind the minus button
    VexaPropertyTreeItem *m_pPlusItem = nullptr; ///< command behind the plus button
    VexaPropertyTreeItem *m_pIntegerItem = nullptr;
};

/// Row that shows the text of a format or trigger node with a button to edit it.
class CTreeFormatStringTextItemValue : public CTreeItemValue
{
public:
    int m_nCameraID = -1;
    int m_nMaxLength = 0; ///< in bytes
    QString m_strValue;
    VexaPropertyTreeItem *m_pSourceDataItem = nullptr; ///< null for trigger nodes
    VexaPropertyTreeItem *m_pFormatItem = nullptr;
};

/// Row that selects a screen of the device.
class CTreeScreenSelectItemValue : public CTreeItemValue
{
public:
    int m_nCameraID = -1;
    int m_nValue = 1;
};
