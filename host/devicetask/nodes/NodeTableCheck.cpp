#include "host/devicetask/nodes/NodeTableCheck.h"

#include "host/devicetask/nodes/DescriptionText.h"
#include "host/devicetask/nodes/NodeKindRules.h"
#include "host/devicetask/nodes/ReferenceGraph.h"

#include <QLoggingCategory>
#include <QSet>

#include <algorithm>

Q_LOGGING_CATEGORY(lcDescription, "vexa.devicetask.description")

namespace {

using Source = NodeOperand::Source;

/// What a reference may lead to, and whether evaluation follows it.
struct ReferenceRule
{
    QByteArray tag;
    NodeGives wants;
    bool isEvaluated;
};

const ReferenceRule *ruleOf(const QByteArray &tag)
{
    static const QVector<ReferenceRule> RULES = {
        {"pValue", NodeGives::Number, true},        {"pValueCopy", NodeGives::Number, true},
        {"pMin", NodeGives::Number, true},          {"pMax", NodeGives::Number, true},
        {"pInc", NodeGives::Number, true},          {"pIsImplemented", NodeGives::Number, true},
        {"pIsAvailable", NodeGives::Number, true},  {"pIsLocked", NodeGives::Number, true},
        {"pVariable", NodeGives::Number, true},     {"pAddress", NodeGives::Number, true},
        {"pIndex", NodeGives::Number, true},        {"pOffset", NodeGives::Number, true},
        {"pLength", NodeGives::Number, true},       {"pValueIndexed", NodeGives::Number, true},
        {"pValueDefault", NodeGives::Number, true}, {"pCommandValue", NodeGives::Number, true},
        {"pPort", NodeGives::Port, true},
    };
    struct LookUp
    {
        LookUp()
        {
            for (const ReferenceRule &rule : RULES) {
                byTag.insert(rule.tag, &rule);
            }
        }
        QHash<QByteArray, const ReferenceRule *> byTag;
    };
    static const LookUp LOOK_UP;
    return LOOK_UP.byTag.value(tag);
}

bool isEvaluated(const NodeInfo::Reference &reference)
{
    return ruleOf(reference.tag) != nullptr;
}

/// The entries of all enumerations by name, each looked through once.
class EntryNames
{
public:
    bool contains(const NodeTable &table, NodeId enumeration, const QByteArray &entry)
    {
        auto known = m_names.find(enumeration);
        if (known == m_names.end()) {
            known = m_names.insert(enumeration, {});
            for (const NodeEntry &candidate : table.at(enumeration).entries) {
                known->insert(candidate.name);
            }
        }
        return known->contains(entry);
    }

private:
    QHash<NodeId, QSet<QByteArray>> m_names;
};

/// The faults that one node has by itself.
class NodeCheck
{
public:
    NodeCheck(NodeTable *table, NodeId id, EntryNames &entryNames)
        : m_entryNames(entryNames)
        , m_pTable(table)
        , m_nId(id)
        , m_node(table->at(id))
        , m_rule(nodeKindRule(m_node.kind))
    {
    }

    void run()
    {
        checkValue();
        if (m_rule.isRegister()) {
            checkRegister();
        }
        if (m_rule.isMasked()) {
            checkBits();
        }
        checkRange();
        checkEntries();
        checkVariables();
        for (const NodeInfo::Reference &reference : m_node.references) {
            checkReference(reference);
        }
    }

private:
    void fault(const QByteArray &reason) { m_pTable->addFault(m_nId, m_node.line, reason); }
    void note(const QByteArray &reason, int line = 0)
    {
        m_pTable->addFault(m_nId, line > 0 ? line : m_node.line, reason, true);
    }

    void checkValue()
    {
        const bool isIndexed = m_node.index != NO_NODE
            && (!m_node.indexedValues.isEmpty() || m_node.defaultValue.source != Source::None);
        if (!m_node.problem.isEmpty()) {
            return;
        }
        if (m_rule.needsValue && m_node.value.source == Source::None && !isIndexed) {
            fault("it has no value");
        }
        if (m_rule.hasFormula() && !m_node.formula.formula) {
            fault(m_rule.isConverter() ? "it has no FormulaFrom" : "it has no Formula");
        }
        if (m_rule.isConverter() && !m_node.formulaTo.formula) {
            note("it has no FormulaTo");
        }
    }

    void checkRegister()
    {
        if (m_node.port == NO_NODE && !hasReference("pPort")) {
            fault("it has no port");
        }
        if (m_node.addresses.isEmpty()) {
            note("it has no address and stands at 0");
        }
        if (!m_node.problem.isEmpty()) {
            return;
        }
        const qint64 length = m_node.length.constant.integer;
        if (m_node.length.source == Source::None) {
            fault("it has no length");
        } else if (m_node.length.source == Source::Constant) {
            const QByteArray lengthFault = m_rule.lengthFault(length);
            if (lengthFault.isEmpty()) {
                checkAddress(static_cast<quint64>(length));
            } else {
                fault(lengthFault);
            }
        }
    }

    /// Constant parts alone must leave room for the register below 2^64.
    void checkAddress(quint64 length)
    {
        quint64 end = length - 1;
        for (const NodeAddress &part : m_node.addresses) {
            if (part.kind != NodeAddress::Kind::Constant) {
                return;
            }
            const auto address = static_cast<quint64>(part.constant);
            if (end + address < end) {
                fault("its address lies beyond 64 bits");
                return;
            }
            end += address;
        }
    }

    void checkBits()
    {
        if (!m_node.problem.isEmpty()) {
            return;
        }
        const bool isConstant = m_node.length.source == Source::Constant;
        const qint64 bytes = isConstant ? m_node.length.constant.integer : m_rule.maxLength;
        const qint64 last = bytes * 8 - 1;
        if (m_node.lsb < 0 || m_node.msb < 0 || m_node.lsb > last || m_node.msb > last) {
            fault("its bits lie outside its register");
        } else if (!m_node.isBigEndian && m_node.lsb > m_node.msb) {
            note("its LSB is above its MSB, though its register is little-endian");
        }
    }

    void checkRange()
    {
        const auto isAbove = [](const FormulaNumber &a, const FormulaNumber &b) {
            return a.isInteger && b.isInteger ? a.integer > b.integer : a.toReal() > b.toReal();
        };
        if (m_node.min.source == Source::Constant && m_node.max.source == Source::Constant
            && isAbove(m_node.min.constant, m_node.max.constant)) {
            note("its Min is above its Max");
        }
        if (m_node.inc.source == Source::Constant && !(m_node.inc.constant.toReal() > 0)) {
            note("its Inc is not positive and counts as none");
        }
    }

    void checkEntries()
    {
        if (m_node.kind != NodeKind::Enumeration) {
            return;
        }
        if (m_node.entries.isEmpty()) {
            note("it has no entries");
        }
        QSet<QByteArray> names;
        QSet<qint64> values;
        for (const NodeEntry &entry : m_node.entries) {
            const QByteArray title = "its entry " + DescriptionText::shown(entry.name);
            if (entry.name.isEmpty()) {
                note("an entry has no name", entry.line);
            } else if (names.contains(entry.name)) {
                note(title + " is there twice", entry.line);
            }
            if (entry.hasValue && values.contains(entry.value)) {
                note(title + " has the value " + QByteArray::number(entry.value)
                         + " of another one",
                     entry.line);
            }
            names.insert(entry.name);
            if (entry.hasValue) {
                values.insert(entry.value);
            }
        }
    }

    /// "X.Enum.Name" stands for the value of an entry.
    void checkVariables()
    {
        for (const NodeVariable &variable : m_node.variables) {
            if (variable.property == NodeVariable::Property::Entry && variable.node != NO_NODE
                && !m_entryNames.contains(*m_pTable, variable.node, variable.entry)) {
                fault("its pVariable " + DescriptionText::shown(variable.name)
                      + " names no entry of "
                      + DescriptionText::shown(m_pTable->at(variable.node).name));
            }
        }
    }

    void checkReference(const NodeInfo::Reference &reference)
    {
        const ReferenceRule *rule = ruleOf(reference.tag);
        const bool isHarmless = !rule;
        const QByteArray target = DescriptionText::shown(reference.target);
        if (reference.target.isEmpty()) {
            m_pTable->addFault(m_nId, reference.line, "its " + reference.tag + " names no node",
                               isHarmless);
        } else if (reference.node == NO_NODE) {
            m_pTable->addFault(m_nId, reference.line,
                               "its " + reference.tag + " refers to " + target
                                   + ", which does not exist",
                               isHarmless);
        } else if (rule && !fits(*rule, nodeKindRule(m_pTable->at(reference.node).kind).gives)) {
            m_pTable->addFault(m_nId, reference.line,
                               "its " + reference.tag + " refers to " + target
                                   + ", which has no value that it can use");
        }
    }

    bool fits(const ReferenceRule &rule, NodeGives gives) const
    {
        const bool isText =
            m_node.kind == NodeKind::String && (rule.tag == "pValue" || rule.tag == "pValueCopy");
        return gives == (isText ? NodeGives::Text : rule.wants);
    }

    bool hasReference(const char *tag) const
    {
        return std::any_of(
            m_node.references.cbegin(), m_node.references.cend(),
            [tag](const NodeInfo::Reference &reference) { return reference.tag == tag; });
    }

    EntryNames &m_entryNames;
    NodeTable *m_pTable;
    NodeId m_nId;
    const NodeInfo &m_node;
    const NodeKindRule &m_rule;
};

/// The faults that nodes have through those that they refer to.
class ChainCheck
{
public:
    explicit ChainCheck(NodeTable *table)
        : m_pTable(table)
    {
    }

    void run()
    {
        std::vector<int> needed;
        for (NodeId id = 0; id < m_pTable->count(); ++id) {
            needed.clear();
            visitNeeded(m_pTable->at(id), [&needed](NodeId target, int) {
                needed.push_back(target);
                return false;
            });
            m_graph.addNode(needed);
        }
        m_graph.workOut();
        for (const NodeId id : m_graph.order()) {
            check(id);
        }
    }

private:
    /// Calls `visit` with each node that evaluation asks, and the line of the reference, until it returns true.
    template<class Visit>
    static void visitNeeded(const NodeInfo &node, Visit visit)
    {
        for (const NodeInfo::Reference &reference : node.references) {
            if (reference.node != NO_NODE && isEvaluated(reference)
                && visit(reference.node, reference.line)) {
                return;
            }
        }
        for (const NodeAddress &address : node.addresses) {
            if (address.formula != NO_NODE && visit(address.formula, node.line)) {
                return;
            }
        }
    }

    void check(NodeId id)
    {
        const NodeInfo &node = m_pTable->at(id);
        if (m_graph.isInCircle(id)) {
            const QByteArray circle =
                m_graph.circleText(id, [this](int member) { return m_pTable->at(member).name; });
            m_pTable->addFault(id, node.line, "its references lead into a circle: " + circle);
            return;
        }
        if (!node.problem.isEmpty()) {
            return;
        }
        visitNeeded(node, [this, id](NodeId target, int line) {
            const NodeInfo &needed = m_pTable->at(target);
            if (needed.problem.isEmpty()) {
                return false;
            }
            m_pTable->addFault(id, line,
                               "it needs " + DescriptionText::shown(needed.name)
                                   + ", which cannot be evaluated");
            return true;
        });
        if (!node.problem.isEmpty()) {
            return;
        }
        if (m_graph.depth(id) > NodeTableCheck::MAX_DEPTH) {
            m_pTable->addFault(id, node.line,
                               "its references go deeper than "
                                   + QByteArray::number(NodeTableCheck::MAX_DEPTH));
        } else if (m_graph.evaluations(id) > NodeTableCheck::MAX_EVALUATIONS) {
            m_pTable->addFault(id, node.line, "its evaluation follows too many references");
        }
    }

    NodeTable *m_pTable;
    ReferenceGraph m_graph;
};

} // namespace

QVector<NodeFault> NodeTableCheck::findProblems(NodeTable *table)
{
    EntryNames entryNames;
    for (NodeId id = 0; id < table->count(); ++id) {
        NodeCheck(table, id, entryNames).run();
    }
    ChainCheck(table).run();
    QVector<NodeFault> faults = table->takeFaults();
    std::stable_sort(faults.begin(), faults.end(),
                     [](const NodeFault &a, const NodeFault &b) { return a.line < b.line; });
    return faults;
}

void NodeTableCheck::log(const QVector<NodeFault> &faults)
{
    constexpr int MAX_LINES = 100;
    QSet<QByteArray> nodes;
    for (const NodeFault &fault : faults) {
        if (fault.isHarmless || nodes.contains(fault.node)) {
            continue;
        }
        nodes.insert(fault.node);
        if (nodes.size() <= MAX_LINES) {
            qCWarning(lcDescription, "Node %s is left out: %s.",
                      DescriptionText::shown(fault.node).constData(), fault.reason.constData());
        }
    }
    if (nodes.size() > MAX_LINES) {
        qCWarning(lcDescription, "%d more nodes are left out.", nodes.size() - MAX_LINES);
    }
}
