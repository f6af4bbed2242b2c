#include "host/devicetask/nodes/FormulaScope.h"

#include "host/devicetask/nodes/NodeBounds.h"
#include "host/devicetask/nodes/NodeKindRules.h"

#include <algorithm>

using NameSource = NodeFormula::Name::Source;
using Property = NodeVariable::Property;

FormulaScope::FormulaScope(NodeEvaluator &evaluator, NodeId id)
    : m_evaluator(evaluator)
    , m_nId(id)
    , m_node(evaluator.at(id))
    , m_arithmetic(nodeKindRule(m_node.kind).isReal ? Formula::Arithmetic::Real
                                                    : Formula::Arithmetic::Integer)
    , m_variables(m_node.variables.size())
    , m_expressions(m_node.expressions.size())
{
}

DeviceError FormulaScope::evaluate(const NodeFormula &formula, const FormulaNumber *argument,
                                   FormulaNumber *out)
{
    m_pArgument = argument;
    return run(formula, out);
}

DeviceError FormulaScope::run(const NodeFormula &formula, FormulaNumber *out)
{
    if (!formula.formula || formula.names.size() != formula.formula->names().size()) {
        return NodeEvaluator::failure(NODE_LOGICAL, m_node,
                                      QStringLiteral("a formula of it is missing"));
    }
    struct Asked
    {
        FormulaScope &scope;
        const NodeFormula &formula;
        DeviceError error;
    } asked{*this, formula, {}};
    QByteArray reason;
    const bool ok = formula.formula->evaluate(
        m_arithmetic,
        [&asked](int index, FormulaNumber *value) {
            asked.error = asked.scope.name(asked.formula.names.at(index), value);
            return !asked.error.failed();
        },
        out, &reason);
    if (ok || asked.error.failed()) {
        return asked.error;
    }
    return NodeEvaluator::failure(NODE_RUNTIME, m_node, QString::fromLatin1(reason));
}

DeviceError FormulaScope::name(const NodeFormula::Name &name, FormulaNumber *out)
{
    switch (name.source) {
    case NameSource::Constant:
        *out = name.constant;
        return {};
    case NameSource::Argument:
        if (!m_pArgument) {
            return NodeEvaluator::failure(NODE_LOGICAL, m_node,
                                          QStringLiteral("its formula has no argument"));
        }
        *out = *m_pArgument;
        return {};
    case NameSource::Variable:
    case NameSource::Expression:
        break;
    }
    const bool isVariable = name.source == NameSource::Variable;
    KnownList &list = isVariable ? m_variables : m_expressions;
    Known &known = list[name.index];
    if (!known.isKnown) {
        const DeviceError error = isVariable
            ? variable(m_node.variables.at(name.index), &known.value)
            : expression(name.index, &known.value);
        if (error.failed()) {
            return error;
        }
        known.isKnown = true;
    }
    *out = known.value;
    return {};
}

/// Expressions that use each other nest like nodes.
DeviceError FormulaScope::expression(int index, FormulaNumber *out)
{
    const NodeEvaluator::Visit visit(m_evaluator, m_nId);
    return visit.error().failed() ? visit.error() : run(m_node.expressions.at(index), out);
}

DeviceError FormulaScope::variable(const NodeVariable &variable, FormulaNumber *out)
{
    switch (variable.property) {
    case Property::Value:
        return m_evaluator.number(variable.node, out);
    case Property::Min:
        return NodeBounds(m_evaluator).minimum(variable.node, out);
    case Property::Max:
        return NodeBounds(m_evaluator).maximum(variable.node, out);
    case Property::Inc:
        return NodeBounds(m_evaluator).increment(variable.node, out);
    case Property::Entry:
        break;
    }
    const NodeEvaluator::Visit visit(m_evaluator, variable.node);
    if (visit.error().failed()) {
        return visit.error();
    }
    const QVector<NodeEntry> &entries = m_evaluator.at(variable.node).entries;
    const auto entry =
        std::find_if(entries.cbegin(), entries.cend(), [&variable](const NodeEntry &candidate) {
            return candidate.hasValue && candidate.name == variable.entry;
        });
    if (entry == entries.cend()) {
        return NodeEvaluator::failure(
            NODE_LOGICAL, m_node,
            QStringLiteral("there is no entry for %1").arg(QString::fromUtf8(variable.name)));
    }
    *out = FormulaNumber::ofInteger(entry->value);
    return {};
}
