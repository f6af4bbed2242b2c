#pragma once

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
};
