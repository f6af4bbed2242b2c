#pragma once

#include "host/devicetask/nodes/HeldValues.h"

#include <arv.h>
#include <atomic>

class NodeTable;
struct LocalValues;

/// What node operations work on, on the connection's own thread. Never kept beyond one operation.
struct DeviceSession
{
    ArvDevice *device;
    const NodeTable &nodes;
    LocalValues &locals; ///< of the connection; see host/devicetask/nodes/LocalValues.h
    std::atomic<unsigned int>
        &answered; ///< register accesses that the device answered; RegisterMemory counts them
    /// Pieces of work so far that were no reads of a node, this one included: one more than last time means that nobody
    /// else has changed anything since.
    quint64 changes = 0;
    HeldValues::Look *look = nullptr; ///< of a reader; null when everything has to be read
};
