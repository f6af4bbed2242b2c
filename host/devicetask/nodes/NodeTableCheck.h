#pragma once

#include "host/devicetask/nodes/NodeTable.h"

#include <QVector>

/// Finds the nodes that cannot be evaluated, and those that need such a node. Nothing is asked of a device.
class NodeTableCheck
{
public:
    /// Deepest chain of references that is evaluated.
    static constexpr int MAX_DEPTH = 128;
    /// Most references that the evaluation of one node may follow; a node that is shared counts each time.
    static constexpr qint64 MAX_EVALUATIONS = 100000;

    /// Sets NodeInfo::problem; gives all faults, those of the reader included, by line. Once a table.
    static QVector<NodeFault> findProblems(NodeTable *table);
    /// One warning for each node that is left out, up to a limit. The opener calls it.
    static void log(const QVector<NodeFault> &faults);
};
