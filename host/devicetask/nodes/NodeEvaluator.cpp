#include "host/devicetask/nodes/NodeEvaluator.h"

#include "host/devicetask/nodes/FormulaScope.h"
#include "host/devicetask/nodes/NodeKindRules.h"
#include "host/devicetask/nodes/RegisterAccess.h"

#include <algorithm>

using Source = NodeOperand::Source;

NodeEvaluator::Visit::Visit(NodeEvaluator &evaluator, NodeId id)
    : m_evaluator(evaluator)
{
    ++evaluator.m_nDepth;
    if (id == NO_NODE) {
        m_error = {NODE_LOGICAL, QStringLiteral("a reference leads nowhere")};
        return;
    }
    const NodeInfo &node = evaluator.at(id);
    m_bVolatile = node.isVolatile;
    evaluator.m_nVolatile += int(m_bVolatile);
    if (!node.problem.isEmpty()) {
        m_error = failure(NODE_LOGICAL, node, QString::fromUtf8(node.problem));
    } else if (evaluator.m_nDepth > MAX_DEPTH || ++evaluator.m_nVisits > MAX_VISITS) {
        m_error = failure(NODE_LOGICAL, node,
                          QStringLiteral("the evaluation follows too many references"));
    }
}

NodeEvaluator::Visit::~Visit()
{
    --m_evaluator.m_nDepth;
    m_evaluator.m_nVolatile -= int(m_bVolatile);
}

NodeEvaluator::NodeEvaluator(const DeviceSession &session)
    : m_session(session)
    , m_memory(session)
{
}

DeviceError NodeEvaluator::failure(DeviceErrorCode code, const NodeInfo &node,
                                   const QString &reason)
{
    return {code, QString::fromUtf8(node.name) + QLatin1String(": ") + reason};
}

DeviceError NodeEvaluator::toWhole(NodeId id, const FormulaNumber &number, qint64 *out) const
{
    return number.toInteger(out)
        ? DeviceError()
        : failure(NODE_RUNTIME, at(id), QStringLiteral("the value does not fit into 64 bits"));
}

DeviceError NodeEvaluator::integer(NodeId id, qint64 *out)
{
    FormulaNumber value;
    const DeviceError error = number(id, &value);
    return error.failed() ? error : toWhole(id, value, out);
}

DeviceError NodeEvaluator::truth(NodeId id, bool *out)
{
    FormulaNumber value;
    const DeviceError error = number(id, &value);
    if (!error.failed()) {
        *out = value.isInteger ? value.integer != 0 : value.real != 0.0;
    }
    return error;
}

DeviceError NodeEvaluator::findCondition(const QVector<NodeId> &conditions, bool until, bool *found)
{
    *found = false;
    for (const NodeId condition : conditions) {
        bool isTrue = false;
        const DeviceError error = truth(condition, &isTrue);
        if (error.isTransport()) {
            return error;
        }
        if (isTrue == until) {
            *found = true;
            break;
        }
    }
    return {};
}

DeviceError NodeEvaluator::operand(NodeId id, const NodeOperand &operand, FormulaNumber *out)
{
    switch (operand.source) {
    case Source::Constant:
        *out = operand.constant;
        return {};
    case Source::Node:
        return number(operand.node, out);
    case Source::None:
        break;
    }
    return failure(NODE_LOGICAL, at(id), QStringLiteral("a number of it is missing"));
}

DeviceError NodeEvaluator::wholeOperand(NodeId id, const NodeOperand &operand, qint64 *out)
{
    FormulaNumber value;
    const DeviceError error = this->operand(id, operand, &value);
    return error.failed() ? error : toWhole(id, value, out);
}

DeviceError NodeEvaluator::selectValue(NodeId id, NodeOperand *operand, LocalValues::Key *key)
{
    const NodeInfo &node = at(id);
    *key = {id, LocalValues::VALUE};
    *operand = node.value;
    if (node.index != NO_NODE) {
        qint64 index = 0;
        const DeviceError error = integer(node.index, &index);
        if (error.failed()) {
            return error;
        }
        const auto found =
            std::find_if(node.indexedValues.cbegin(), node.indexedValues.cend(),
                         [index](const auto &entry) { return entry.first == index; });
        if (found != node.indexedValues.cend()) {
            *operand = found->second;
            key->second = static_cast<int>(found - node.indexedValues.cbegin());
        } else if (node.defaultValue.source != Source::None) {
            *operand = node.defaultValue;
            key->second = LocalValues::DEFAULT;
        }
    }
    if (operand->source == Source::Constant) {
        operand->constant = locals().numbers.value(*key, operand->constant);
    }
    return {};
}

DeviceError NodeEvaluator::convert(NodeId id, const FormulaNumber &below, FormulaNumber *out)
{
    return FormulaScope(*this, id).evaluate(at(id).formula, &below, out);
}

DeviceError NodeEvaluator::number(NodeId id, FormulaNumber *out)
{
    const Visit visit(*this, id);
    return visit.error().failed() ? visit.error() : ownNumber(id, out);
}

DeviceError NodeEvaluator::ownNumber(NodeId id, FormulaNumber *out)
{
    const NodeInfo &node = at(id);
    const NodeKindRule &rule = nodeKindRule(node.kind);
    if (rule.gives != NodeGives::Number) {
        return failure(NODE_PROPERTY, node, QStringLiteral("it has no number"));
    }
    if (rule.isRegister()) {
        return RegisterAccess(*this, id).readNumber(out);
    }
    if (rule.hasFormula() && !rule.isConverter()) {
        return FormulaScope(*this, id).evaluate(node.formula, nullptr, out);
    }
    NodeOperand source;
    LocalValues::Key key;
    FormulaNumber value;
    DeviceError error = selectValue(id, &source, &key);
    if (!error.failed()) {
        error = operand(id, source, &value);
    }
    if (error.failed()) {
        return error;
    }
    if (rule.isConverter()) {
        return convert(id, value, out);
    }
    if (rule.isReal) {
        *out = value;
        return {};
    }
    qint64 whole = 0;
    error = toWhole(id, value, &whole);
    if (!error.failed()) {
        *out = FormulaNumber::ofInteger(node.kind == NodeKind::Boolean ? int(whole == node.onValue)
                                                                       : whole);
    }
    return error;
}
