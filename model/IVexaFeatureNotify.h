#pragma once

class VexaPropertyTreeItem;

/// The way from an item to the views that show it. An item calls it on the thread that changed it; a worker holds the
/// lock of the views meanwhile, so a view must only post to the GUI thread. The operations of the interface do nothing.
class IVexaFeatureNotify
{
public:
    virtual ~IVexaFeatureNotify() = default;

    virtual void itemVisibleChanged(long, VexaPropertyTreeItem *, bool /*bVisible*/) { }
    virtual void itemExpandedChanged(long, VexaPropertyTreeItem *, bool /*bExpanded*/) { }
    /// `nType` is a bit set: 1 the editor, 2 the owner; -1 both.
    virtual void itemDataChanged(long, VexaPropertyTreeItem *, int /*nType*/,
                                 bool /*bNeedRecreateEditor*/, bool /*bFromUiJson*/)
    {
    }
    virtual void itemSpecialChanged(long, VexaPropertyTreeItem *, int /*nType*/) { }
    virtual void itemReadOnlyChanged(long, VexaPropertyTreeItem *, bool /*bReadOnly*/) { }
};
