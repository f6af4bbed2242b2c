#pragma once

class VexaPropertyTreeItem;

/// The way from an item to the views that show it. An item calls it on the thread that changed it, with no
/// lock held; a view passes what it hears on to the GUI thread. The operations of the interface do nothing.
class IVexaFeatureNotify
{
public:
    virtual ~IVexaFeatureNotify() = default;

    virtual void itemVisibleChanged(long lCameraID, VexaPropertyTreeItem *pItem, bool bVisible);
    virtual void itemExpandedChanged(long lCameraID, VexaPropertyTreeItem *pItem, bool bExpanded);
    /// `nType` is a bit set: 1 the editor, 2 the owner; -1 both.
    virtual void itemDataChanged(long lCameraID, VexaPropertyTreeItem *pItem, int nType,
                                 bool bNeedRecreateEditor, bool bFromUiJson);
    virtual void itemSpecialChanged(long lCameraID, VexaPropertyTreeItem *pItem, int nType);
    virtual void itemReadOnlyChanged(long lCameraID, VexaPropertyTreeItem *pItem, bool bReadOnly);
};
