#pragma once

#include "host/devicetask/nodes/NodeTable.h"

/// Notes in the nodes of a description what others say of them: NodeInfo::isCondition, and NodeInfo::isVolatile of
/// those that change whenever a polled node does.
class NodeMarks
{
public:
    /// After the references are resolved; in linear time, whatever the references.
    static void set(NodeTable *table);
};
