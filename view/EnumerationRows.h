#pragma once

#include <QString>

class CTreeEnumationItemValue;
class QComboBox;
class VexaPropertyTreeItem;

/// The rows of an Enumeration's list. GUI thread.
namespace EnumerationRows {

/// Brings the rows of the box up to date: display names, with the numbers of their entries (GenICam EnumEntry Value)
/// as item data. Two entries that share a display name have one row, which carries the present value if that is one of
/// them. Rows that are the same stay, with the current one.
void show(QComboBox *pCombo, const CTreeEnumationItemValue &value, bool bChinese);

/// Names that a client without a brand shows in other words are changed in the item itself. Call it before the
/// snapshot of the value is taken.
void applyNeutralNames(VexaPropertyTreeItem *pItem, const QString &strNodeName);

} // namespace EnumerationRows
