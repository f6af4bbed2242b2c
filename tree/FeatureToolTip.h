#pragma once

#include <QDomElement>
#include <QString>
#include <QVector>

class CTreeItemValue;
struct EnumEntryReading;

/// What the description text of a feature is made of.
struct FeatureToolTipSource
{
    QDomElement element; ///< the node in the device description
    QString streamable; ///< element Streamable, "No" without one
    QString visibility; ///< GenICam Visibility as the tree holds it
    const CTreeItemValue *value = nullptr; ///< names, description and range; not null
    QVector<EnumEntryReading> entries; ///< of an Enumeration
};

namespace FeatureToolTip {

/// The description text of a feature as HTML for language "ENG" or "CH"; empty for a null element or value. Any
/// thread.
QString CreateToolTip(const FeatureToolTipSource &source, const QString &language);
/// Its tail: the range, increment or entries; the same in both languages.
QString CreateValueInfo(const FeatureToolTipSource &source);

} // namespace FeatureToolTip
