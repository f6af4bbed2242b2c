#pragma once

#include <QMap>
#include <QString>

/// The feature values that arv-tool-0.8 prints of the camera at an address.
struct ToolValue
{
    QString kind; ///< "Float", "Enumeration", ...
    QString text; ///< without quotes; a unit may stand behind a number
};

namespace ToolValues {

/// By feature name. Categories and commands have none. Empty with a reason in `error` when the tool fails.
QMap<QString, ToolValue> of(const QString &address, QString *error);

} // namespace ToolValues
