#pragma once

#include <QString>

/// What a format row does by the name of its node.
namespace VexaStringFormatRules {

/// What the button of a row is for, by words in its "Custom_" name.
enum Form {
    FORM_OUTPUT, ///< "Edit" asks the host for its editor of output formats
    FORM_TAG_MENU, ///< an icon opens the menu of tags
    FORM_TRIGGER_BYTES ///< "Edit" asks for a table of characters; keys are filtered
};
Form formOf(const QString &strCustomNode);

/// Source text of the row's title; null for a name without one.
const char *titleOf(const QString &strCustomNode);

/// A tag as it goes into the text: an entry named codecontent gives "<codecontent>". Directories and results are
/// lists, whose tags bring a separator.
QString tagText(const QString &strCustomNode, const QString &strEntry);

/// The Enumeration that tells text from bytes for a trigger row; empty for any other.
QString triggerFormatNode(const QString &strCustomNode);

/// Whether the text of a directory would have an empty level.
bool hasEmptyLevel(const QString &strCustomNode, const QString &strText);

/// Ideographs, which no format takes.
bool hasIdeographs(const QString &strText);

enum Refusal { REFUSED_NOT, REFUSED_EMPTY, REFUSED_CHARACTERS };
/// Why a text is not to be written to this format node.
Refusal refusal(const QString &strFormatNode, const QString &strText);
/// What the user is told of it, in the client's language; empty for REFUSED_NOT.
QString warning(Refusal eRefusal);

/// The name of an uploaded picture, which a few rules single out.
bool isFtpPictureName(const QString &strFormatNode);

} // namespace VexaStringFormatRules
