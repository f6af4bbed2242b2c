#pragma once

#include "host/devicetask/nodes/NodeEvaluator.h"

/// Min, Max and Inc of nodes: their own, else those of the node below them, else what their kind can hold. Part of one
/// operation; on the connection's thread.
class NodeBounds
{
public:
    explicit NodeBounds(NodeEvaluator &evaluator)
        : m_evaluator(evaluator)
    {
    }

    /// Where no bound is named: the whole of 64 bits for integers, the largest doubles for the others.
    DeviceError minimum(NodeId id, FormulaNumber *out);
    DeviceError maximum(NodeId id, FormulaNumber *out);
    /// 1 where none is named; may be any number then.
    DeviceError increment(NodeId id, FormulaNumber *out);

    /// True when the node ends in 64 unsigned bits and no bound of its own: their upper half reads as negative numbers
    /// and is written as such.
    DeviceError takesAll64Bits(NodeId id, bool *out);

private:
    enum class Which { Min, Max, Inc };

    DeviceError find(NodeId id, Which which, FormulaNumber *out, bool *exists);
    DeviceError ofKind(NodeId id, Which which, FormulaNumber *out, bool *exists);
    DeviceError ofRegister(NodeId id, Which which, FormulaNumber *out, bool *exists);
    DeviceError ofConverter(NodeId id, Which which, FormulaNumber *out, bool *exists);
    static const NodeOperand &own(const NodeInfo &node, Which which);

    NodeEvaluator &m_evaluator;
};
