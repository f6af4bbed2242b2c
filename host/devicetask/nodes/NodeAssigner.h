#pragma once

#include "host/devicetask/nodes/NodeEvaluator.h"

#include <QByteArray>

/// Carries a value that was checked down to the registers, or to where the values of constants live. Part of one
/// operation; on the connection's thread.
class NodeAssigner
{
public:
    explicit NodeAssigner(NodeEvaluator &evaluator)
        : m_evaluator(evaluator)
    {
    }

    /// The value as NodeEvaluator::number() reads it; a double becomes the nearest whole number where integers live.
    /// pValueCopy comes after pValue.
    DeviceError number(NodeId id, const FormulaNumber &value);
    /// Of a String or StringReg.
    DeviceError text(NodeId id, const QByteArray &value);
    /// Writes a Command's command value.
    DeviceError command(NodeId id);

private:
    DeviceError below(NodeId id, const FormulaNumber &value);
    DeviceError toWhole(NodeId id, const FormulaNumber &value, FormulaNumber *out) const;

    NodeEvaluator &m_evaluator;
};
