#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/GcSession.h"

#include <QByteArray>

/// Writes of nodes by name. A value is checked against access mode, range and entries first, so that what the node
/// does not take never reaches the device. Under the device's lock.
class NodeWriter
{
public:
    static DeviceError integer(const GcSession &session, const QByteArray &name, qint64 value);
    static DeviceError floating(const GcSession &session, const QByteArray &name, float value);
    /// By the entry's numeric value.
    static DeviceError enumeration(const GcSession &session, const QByteArray &name, quint32 value);
    static DeviceError boolean(const GcSession &session, const QByteArray &name, bool value);
    /// UTF-8; the rest of the register is filled with zeros.
    static DeviceError string(const GcSession &session, const QByteArray &name,
                              const QByteArray &value);
    static DeviceError execute(const GcSession &session, const QByteArray &name);
};
