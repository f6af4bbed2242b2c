#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

/// What a simulated device says of itself, found out without the module.
namespace DeviceReference {

struct Value
{
    bool readable = false; ///< implemented, available, and not write only
    QVariant value;
    QVariant min;
    QVariant max;
    QVariant inc;
};

/// Every feature in the description of a fresh built-in device, read by an ArvGc of its own; by name.
QMap<QString, Value> readFeatures(const QString &builtInId);

} // namespace DeviceReference
