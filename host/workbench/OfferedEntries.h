#pragma once

#include <QString>
#include <QVector>

class CTreeEnumationItemValue;
class VexaFeatureTree;

/// One EnumEntry that the device offers now.
struct OfferedEntry
{
    QString name;
    QString displayName;
    qint64 value;
};

/// The entries of an enumeration of this tree, in the order of the description.
QVector<OfferedEntry> offeredEntries(const VexaFeatureTree &tree,
                                     const CTreeEnumationItemValue &enumeration);
