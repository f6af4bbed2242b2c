#pragma once

#include <QString>
#include <QVariant>

class CTreeItemValue;
class VexaFeatureTree;

/// What a text on the command line means for a feature.
namespace TypedText {

/// A value as the tree's editors write it, or why the text is none.
struct Result
{
    QVariant value; ///< invalid when the text was refused
    QString reason; ///< translated
};

/// Integers are decimal, with "0x" hexadecimal, or in the form that the tree shows (addresses); switches true or
/// false, on or off, 1 or 0; entries go by name, display name or number. Ranges and lengths are those that were read
/// last.
Result valueOf(const VexaFeatureTree &tree, const CTreeItemValue &feature, const QString &text);

} // namespace TypedText
