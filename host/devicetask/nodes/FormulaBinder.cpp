#include "host/devicetask/nodes/FormulaBinder.h"

#include "host/devicetask/nodes/DescriptionText.h"
#include "host/devicetask/nodes/NodeKindRules.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/ReferenceGraph.h"

#include <algorithm>

using Source = NodeFormula::Name::Source;

namespace {

QByteArray titleOf(const NodeDraft::FormulaText &text)
{
    return "its " + text.tag
        + (text.name.isEmpty() ? QByteArray() : ' ' + DescriptionText::shown(text.name));
}

} // namespace

FormulaBinder::FormulaBinder(NodeDraft &draft)
    : m_draft(draft)
{
}

void FormulaBinder::bindAll()
{
    const NodeKindRule &rule = nodeKindRule(m_draft.info.kind);
    if (!rule.hasFormula()) {
        return;
    }
    if (rule.isConverter()) {
        NodeFormula::Name argument;
        argument.source = Source::Argument;
        m_names.insert("TO", argument);
        m_names.insert("FROM", argument);
    }
    const auto declare = [this](Source source, int index, const QByteArray &spelling) {
        NodeFormula::Name name;
        name.source = source;
        name.index = index;
        if (source == Source::Constant) {
            name.constant = m_draft.constants[index].value;
        }
        m_names.insert(spelling, name);
    };
    for (int i = 0; i < m_draft.expressions.size(); ++i) {
        declare(Source::Expression, i, m_draft.expressions[i].name);
    }
    for (int i = 0; i < m_draft.constants.size(); ++i) {
        declare(Source::Constant, i, m_draft.constants[i].name);
    }
    for (int i = 0; i < m_draft.info.variables.size(); ++i) {
        declare(Source::Variable, i, m_draft.info.variables[i].name);
    }
    bool isSound = true;
    m_draft.info.expressions.resize(m_draft.expressions.size());
    for (int i = 0; i < m_draft.expressions.size(); ++i) {
        isSound = bind(m_draft.expressions[i], &m_draft.info.expressions[i]) && isSound;
    }
    for (const auto &[text, formula] : {qMakePair(&m_draft.formula, &m_draft.info.formula),
                                        qMakePair(&m_draft.formulaTo, &m_draft.info.formulaTo)}) {
        if (text->line > 0) {
            bind(*text, formula);
        }
    }
    if (isSound) {
        checkExpressions();
    }
}

bool FormulaBinder::bind(const NodeDraft::FormulaText &text, NodeFormula *formula)
{
    QByteArray reason;
    const std::shared_ptr<const Formula> parsed =
        Formula::parse(text.text.trimmed(), &reason, m_names.keys().toVector());
    if (!parsed) {
        m_draft.addFault(text.line, titleOf(text) + " cannot be read: " + reason);
        return false;
    }
    QVector<NodeFormula::Name> names;
    for (const QByteArray &spelling : parsed->names()) {
        NodeFormula::Name name;
        if (!nameOf(spelling, &name)) {
            m_draft.addFault(text.line,
                             titleOf(text) + " uses " + DescriptionText::shown(spelling)
                                 + ", which stands for nothing");
            return false;
        }
        names.append(name);
    }
    formula->formula = parsed;
    formula->names = names;
    return true;
}

bool FormulaBinder::nameOf(const QByteArray &spelling, NodeFormula::Name *name) const
{
    auto found = m_names.constFind(spelling);
    if (found == m_names.constEnd()) {
        // "X" and "X.Value" are the same.
        found = m_names.constFind(spelling.endsWith(".Value") ? spelling.chopped(6)
                                                              : spelling + ".Value");
    }
    if (found == m_names.constEnd()) {
        return false;
    }
    *name = *found;
    return true;
}

void FormulaBinder::checkExpressions()
{
    ReferenceGraph graph;
    for (const NodeFormula &expression : qAsConst(m_draft.info.expressions)) {
        std::vector<int> needed;
        for (const NodeFormula::Name &name : expression.names) {
            if (name.source == Source::Expression) {
                needed.push_back(name.index);
            }
        }
        graph.addNode(needed);
    }
    graph.workOut();
    for (int i = 0; i < m_draft.expressions.size(); ++i) {
        const NodeDraft::FormulaText &text = m_draft.expressions[i];
        if (graph.isInCircle(i)) {
            const QByteArray circle =
                graph.circleText(i, [this](int place) { return m_draft.expressions[place].name; });
            m_draft.addFault(text.line, titleOf(text) + " leads into a circle: " + circle);
        } else if (graph.depth(i) > NodeTableCheck::MAX_DEPTH
                   || graph.evaluations(i) > NodeTableCheck::MAX_EVALUATIONS) {
            m_draft.addFault(text.line, titleOf(text) + " uses too many others");
        }
    }
}
