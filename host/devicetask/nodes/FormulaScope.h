#pragma once

#include "host/devicetask/nodes/NodeEvaluator.h"

#include <QVarLengthArray>

/// One evaluation of the formulas of one node: gives their names a meaning, each worked out when it is needed and at
/// most once. On the connection's thread.
class FormulaScope
{
public:
    FormulaScope(NodeEvaluator &evaluator, NodeId id);

    /// `argument` is what TO or FROM of a converter stands for, null in a swiss knife.
    DeviceError evaluate(const NodeFormula &formula, const FormulaNumber *argument,
                         FormulaNumber *out);

private:
    struct Known
    {
        bool isKnown = false;
        FormulaNumber value;
    };
    using KnownList = QVarLengthArray<Known, 8>;

    DeviceError run(const NodeFormula &formula, FormulaNumber *out);
    DeviceError name(const NodeFormula::Name &name, FormulaNumber *out);
    DeviceError expression(int index, FormulaNumber *out);
    DeviceError variable(const NodeVariable &variable, FormulaNumber *out);

    NodeEvaluator &m_evaluator;
    const NodeId m_nId;
    const NodeInfo &m_node;
    const Formula::Arithmetic m_arithmetic;
    const FormulaNumber *m_pArgument = nullptr;
    KnownList m_variables;
    KnownList m_expressions;
};
