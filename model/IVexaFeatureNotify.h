#pragma once

class VexaPropertyTreeItem;

/// The way from an item to the views that show it. An item calls it on the thread that changed it; a worker holds the
/// lock of the views meanwhile, so a view must only post to the GUI thread. The operations of the interface do nothing.
class IVexaFeatureNotify
{
public:
    virtual ~IVexaFeatureNotify() = default;

    /// The item is shown, or hidden, from now on.
    virtual void itemVisibleChanged(long, VexaPropertyTreeItem *, bool /*bVisible*/) { }
    /// The item's branch is to be opened or closed; the item keeps no such state.
    virtual void itemExpandedChanged(long, VexaPropertyTreeItem *, bool /*bExpanded*/) { }
    /// The value or its texts have changed. `nType` is a bit set: 1 the editor, 2 the owner; -1 both.
    virtual void itemDataChanged(long, VexaPropertyTreeItem *, int /*nType*/,
                                 bool /*bNeedRecreateEditor*/, bool /*bFromUiJson*/)
    {
    }
    /// `nType` is a NotifyViewSpecial.
    virtual void itemSpecialChanged(long, VexaPropertyTreeItem *, int /*nType*/) { }
    /// The device takes a new value, or none, from now on.
    virtual void itemReadOnlyChanged(long, VexaPropertyTreeItem *, bool /*bReadOnly*/) { }
};
