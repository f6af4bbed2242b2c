#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// Lists of features that stay out of feature files.
namespace FeatureFileFilters {

using Filters = QMap<QString, QStringList>;

/// The list for every interface that has no file of its own.
const QStringList &builtIn();
/// The `.filter` files below programDataPath, by interface name: names with a comma between them, taken as they
/// stand. Files that cannot be read are passed over.
Filters load();
/// The interface name of a device type code, empty for those without one.
QString interfaceName(unsigned int deviceType);

} // namespace FeatureFileFilters
