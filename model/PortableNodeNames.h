#pragma once

#include <QString>
#include <QStringList>

/// Page descriptions name some nodes in a portable way, by words that begin with "Node_", because two generations of
/// devices have different names for them. "QX" has the older names; "QH", "QG" and "QV" share the newer ones.
namespace PortableNodeNames {

/// "QX" first, which stands when no platform is known to fit.
const QStringList &platformKeys();
/// All portable names.
QStringList portableNames();
/// The device's name for a portable one; empty for an unknown name or platform and for the bare prefix.
QString nodeName(const QString &strPlatformKey, const QString &strPortableName);

} // namespace PortableNodeNames
