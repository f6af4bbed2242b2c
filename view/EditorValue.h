#pragma once

#include <QVariant>

class VexaPropertyTreeItem;

/// What an edit means for the value object of its item, by element tag. GUI thread; takes the item's update lock.
namespace EditorValue {

/// Whether the item holds this value already. Only tags with a value are compared: a command always differs,
/// and so does a value that was never read.
bool isEqual(const VexaPropertyTreeItem *pItem, const QVariant &value);
/// Enters a value that the device has taken for this node; readings that began before it are not published any more.
void store(VexaPropertyTreeItem *pItem, const QString &strNodeName, const QVariant &value);

/// An Integer that is edited as text, from its Representation (HexNumber, IPV4Address, MACAddress, PureNumber).
bool isTextInteger(const VexaPropertyTreeItem *pItem);

} // namespace EditorValue
