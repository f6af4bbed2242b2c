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

/// The features that stand directly on one register at a fixed address, decoded from the bytes in the memory of a fresh
/// built-in device: address, length, byte order and sign are taken from the description's text.
QMap<QString, QVariant> decodePlainRegisters(const QString &builtInId);

} // namespace DeviceReference
