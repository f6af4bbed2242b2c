#pragma once

#include "DeviceTaskModule/NodeValues.h"
#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"
#include "host/devicetask/nodes/NodeTable.h"

#include <QByteArray>
#include <QVector>

class NodeEvaluator;

/// Works out access modes from the description's conditions, from the registers and from the nodes below. All
/// conditions of one list must hold. On the connection's thread.
class AccessMode
{
public:
    /// The node's present mode. A node that does not exist or cannot be evaluated is not implemented. `mode` stays
    /// on failure.
    static DeviceError of(const DeviceSession &session, const QByteArray &name, int *mode);
    /// The modes that no register can change, by NodeId; -1 for a node with a condition that has to be evaluated.
    static QVector<signed char> fixed(const NodeTable &nodes);
    /// As the first step of an operation: gives the node, or fails unless it exists and can be read; locks are not
    /// looked at, so they cost no access.
    static DeviceError requireReadable(NodeEvaluator &evaluator, const QByteArray &name,
                                       NodeId *id);
    static DeviceError requireWritable(NodeEvaluator &evaluator, const QByteArray &name,
                                       NodeId *id);
};
