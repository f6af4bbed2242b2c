#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/GcSession.h"

#include <QByteArray>

/// GenICam's access modes (EAccessMode).
enum NodeAccessMode { NODE_NI = 0, NODE_NA = 1, NODE_WO = 2, NODE_RO = 3, NODE_RW = 4 };

/// Works out access modes from the description's conditions; what Aravis answers leaves out locks, availability and
/// the nodes below. Under the device's lock.
class AccessMode
{
public:
    /// The node's present mode. A node that does not exist or cannot be evaluated is not implemented. `mode` stays
    /// on failure.
    static DeviceError of(const GcSession &session, const QByteArray &name, int *mode);
    /// Fails unless the node exists and can be read; locks are not looked at, so they cost no access.
    static DeviceError requireReadable(const GcSession &session, const QByteArray &name);
    static DeviceError requireWritable(const GcSession &session, const QByteArray &name);
};
