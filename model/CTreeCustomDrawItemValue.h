#pragma once

#include "model/CTreeItemValue.h"

/// Row of the draw feature: three state flags and the kind of drawing.
class CTreeCustomDrawItemValue : public CTreeItemValue
{
public:
    /// Takes over the draw kind only: the flags belong to the row.
    void copy(CTreeItemValue *pSource, bool bCopyBase) override;

    bool m_bDrawOn = false;
    bool m_bDrawEnable = true;
    bool m_bDrawVisible = true;
    int m_nDrawType = 0;
    int m_nCameraID = -1;
};
