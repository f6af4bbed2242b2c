#pragma once

#include <QString>

/// Names of the tags that formats are made of, as devices show them.
namespace VexaStringFormatTags {

/// The name in the client's language. A device shows it in English or Chinese; a name that is not known stays.
QString translated(const QString &strShown);

} // namespace VexaStringFormatTags
