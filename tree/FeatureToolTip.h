#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

class CTreeItemValue;
struct EnumEntryReading;
struct NodeFacts;

/// What the description text of a feature is made of.
struct FeatureToolTipSource
{
    const NodeFacts *facts = nullptr; ///< what the device description says of the node
    const CTreeItemValue *value = nullptr; ///< names, description and range; not null
    bool valueRead = true; ///< the value, and with it its range, came from the device
    QVector<EnumEntryReading> entries; ///< of an Enumeration
};

namespace FeatureToolTip {

/// The description text of a feature as HTML for language "ENG" or "CH"; empty without facts or value. Any
/// thread.
QString CreateToolTip(const FeatureToolTipSource &source, const QString &language);
/// Its tail: the range, increment or entries; the same in both languages.
QString CreateValueInfo(const FeatureToolTipSource &source);
/// Everything that the texts depend on and that may change while the camera is open. Cheap: it is taken at every update
/// of a node to see whether the texts still hold.
QByteArray stateOf(const CTreeItemValue &value, bool valueRead,
                   const QVector<EnumEntryReading> &entries);

} // namespace FeatureToolTip
