#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"
#include "host/devicetask/nodes/LocalValues.h"
#include "host/devicetask/nodes/NodeTable.h"
#include "host/devicetask/nodes/RegisterMemory.h"

/// The numbers of nodes, worked out from the description and the device's registers. One object an operation (value,
/// bounds and conditions of one node): within it each register is read once. On the connection's thread.
///
/// Nodes with a problem fail with NODE_LOGICAL, formulas without a value with NODE_RUNTIME; the detail names the node.
/// Nothing looks at access modes here. Out arguments are filled only on success.
class NodeEvaluator
{
public:
    /// Deepest nesting of nodes in one another; twice what a description may have, as inner formulas and expressions
    /// count too.
    static constexpr int MAX_DEPTH = 256;
    /// Most nodes that one operation may visit.
    static constexpr int MAX_VISITS = 100000;

    /// Counts a visit of a node, and its depth for as long as the object lives.
    class Visit
    {
    public:
        Visit(NodeEvaluator &evaluator, NodeId id);
        ~Visit();
        Visit(const Visit &) = delete;
        Visit &operator=(const Visit &) = delete;

        /// Why the node must not be evaluated.
        DeviceError error() const { return m_error; }

    private:
        NodeEvaluator &m_evaluator;
        bool m_bVolatile = false;
        DeviceError m_error;
    };

    explicit NodeEvaluator(const DeviceSession &session);

    const NodeTable &nodes() const { return m_session.nodes; }
    const NodeInfo &at(NodeId id) const { return m_session.nodes.at(id); }
    LocalValues &locals() { return m_session.locals; }
    RegisterMemory &memory() { return m_memory; }
    /// Whether the way to the node that is visited now is free of those whose values may not be held.
    bool mayHold() const { return m_nVolatile == 0; }

    /// The value: 1 or 0 of a Boolean, the entry's value of an Enumeration.
    DeviceError number(NodeId id, FormulaNumber *out);
    /// The same as an integer; a double loses its fraction.
    DeviceError integer(NodeId id, qint64 *out);
    /// Whether the value differs from 0, as pIsAvailable and the like mean it.
    DeviceError truth(NodeId id, bool *out);
    /// Evaluates until one condition has the value `until`; `found` tells whether one had. A condition that the device
    /// answered but that cannot be worked out counts as false; only a device that does not answer is an error.
    DeviceError findCondition(const QVector<NodeId> &conditions, bool until, bool *found);
    /// A constant, or the value of a node, as it stands in a property of node `id`.
    DeviceError operand(NodeId id, const NodeOperand &operand, FormulaNumber *out);
    DeviceError wholeOperand(NodeId id, const NodeOperand &operand, qint64 *out);
    /// Where the value of an Integer, Float, ... stands: its Value, pValue, or the one of them that pIndex selects.
    DeviceError selectValue(NodeId id, NodeOperand *operand, LocalValues::Key *key);
    /// FormulaFrom of a converter: what a value of the node below it means.
    DeviceError convert(NodeId id, const FormulaNumber &below, FormulaNumber *out);

    static DeviceError failure(DeviceErrorCode code, const NodeInfo &node, const QString &reason);
    /// Without the fraction; NODE_RUNTIME for what does not fit into 64 bits.
    DeviceError toWhole(NodeId id, const FormulaNumber &number, qint64 *out) const;

private:
    DeviceError ownNumber(NodeId id, FormulaNumber *out);

    const DeviceSession &m_session;
    RegisterMemory m_memory;
    int m_nDepth = 0;
    int m_nVisits = 0;
    int m_nVolatile = 0; ///< volatile nodes that are visited now, one below the other
};
