#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"

#include <QByteArray>

/// Writes of nodes by name. A value is checked against access mode, range and entries first, so that what the node
/// does not take never reaches the device. On the connection's thread.
class NodeWriter
{
public:
    static DeviceError integer(const DeviceSession &session, const QByteArray &name, qint64 value);
    static DeviceError floating(const DeviceSession &session, const QByteArray &name, float value);
    /// By the entry's numeric value.
    static DeviceError enumeration(const DeviceSession &session, const QByteArray &name,
                                   quint32 value);
    static DeviceError boolean(const DeviceSession &session, const QByteArray &name, bool value);
    /// UTF-8; the rest of the register is filled with zeros.
    static DeviceError string(const DeviceSession &session, const QByteArray &name,
                              const QByteArray &value);
    static DeviceError execute(const DeviceSession &session, const QByteArray &name);
};
