#include "host/devicetask/nodes/NodeAssigner.h"

#include "host/devicetask/nodes/FormulaScope.h"
#include "host/devicetask/nodes/NodeKindRules.h"
#include "host/devicetask/nodes/RegisterAccess.h"

#include <cmath>

using Source = NodeOperand::Source;

DeviceError NodeAssigner::toWhole(NodeId id, const FormulaNumber &value, FormulaNumber *out) const
{
    qint64 whole = 0;
    const DeviceError error = m_evaluator.toWhole(
        id, value.isInteger ? value : FormulaNumber::ofReal(std::round(value.real)), &whole);
    *out = FormulaNumber::ofInteger(whole);
    return error;
}

DeviceError NodeAssigner::number(NodeId id, const FormulaNumber &value)
{
    const NodeEvaluator::Visit visit(m_evaluator, id);
    if (visit.error().failed()) {
        return visit.error();
    }
    const NodeInfo &node = m_evaluator.at(id);
    const NodeKindRule &rule = nodeKindRule(node.kind);
    if (rule.gives != NodeGives::Number || (rule.hasFormula() && !rule.isConverter())) {
        return NodeEvaluator::failure(NODE_NOT_ACCESSIBLE, node,
                                      QStringLiteral("it cannot be written"));
    }
    if (rule.isRegister()) {
        return RegisterAccess(m_evaluator, id).writeNumber(value);
    }
    FormulaNumber own = value;
    DeviceError error;
    if (!rule.isReal) {
        error = toWhole(id, value, &own);
    }
    if (!error.failed() && node.kind == NodeKind::Boolean) {
        own = FormulaNumber::ofInteger(own.integer != 0 ? node.onValue : node.offValue);
    }
    if (!error.failed() && rule.isConverter()) {
        const FormulaNumber argument = own;
        error = FormulaScope(m_evaluator, id).evaluate(node.formulaTo, &argument, &own);
    }
    return error.failed() ? error : below(id, own);
}

DeviceError NodeAssigner::below(NodeId id, const FormulaNumber &value)
{
    NodeOperand target;
    LocalValues::Key key;
    DeviceError error = m_evaluator.selectValue(id, &target, &key);
    if (error.failed()) {
        return error;
    }
    if (target.source == Source::Node) {
        error = number(target.node, value);
    } else if (target.source == Source::Constant) {
        m_evaluator.locals().numbers.insert(key, value);
    } else {
        return NodeEvaluator::failure(NODE_LOGICAL, m_evaluator.at(id),
                                      QStringLiteral("it has no value"));
    }
    for (const NodeId copy : m_evaluator.at(id).valueCopies) {
        if (error.failed()) {
            break;
        }
        error = number(copy, value);
    }
    return error;
}

DeviceError NodeAssigner::text(NodeId id, const QByteArray &value)
{
    const NodeEvaluator::Visit visit(m_evaluator, id);
    if (visit.error().failed()) {
        return visit.error();
    }
    const NodeInfo &node = m_evaluator.at(id);
    if (node.kind == NodeKind::StringReg) {
        return RegisterAccess(m_evaluator, id).writeText(value);
    }
    if (node.kind != NodeKind::String) {
        return NodeEvaluator::failure(NODE_PROPERTY, node, QStringLiteral("it has no text"));
    }
    DeviceError error;
    if (node.value.source == Source::Node) {
        error = text(node.value.node, value);
    } else {
        m_evaluator.locals().texts.insert(id, value);
    }
    for (const NodeId copy : node.valueCopies) {
        if (error.failed()) {
            break;
        }
        error = text(copy, value);
    }
    return error;
}

DeviceError NodeAssigner::command(NodeId id)
{
    const NodeEvaluator::Visit visit(m_evaluator, id);
    FormulaNumber value;
    DeviceError error = visit.error();
    if (!error.failed()) {
        error = m_evaluator.operand(id, m_evaluator.at(id).commandValue, &value);
    }
    return error.failed() ? error : below(id, value);
}
