#include "host/devicetask/nodes/NodeTableReader.h"

#include "host/devicetask/nodes/DescriptionCursor.h"
#include "host/devicetask/nodes/DescriptionText.h"
#include "host/devicetask/nodes/FormulaBinder.h"
#include "host/devicetask/nodes/NodeKindRules.h"
#include "host/devicetask/nodes/NodeMarks.h"
#include "host/devicetask/nodes/NodeProperties.h"

namespace {

/// A parsed formula takes a multiple of its text.
constexpr int MAX_FORMULA_TEXT = 8 * 1024 * 1024;

class TableBuilder
{
public:
    TableBuilder(DescriptionCursor &xml, NodeTable *table)
        : m_xml(xml)
        , m_pTable(table)
    {
    }

    void build()
    {
        if (m_xml.enterRoot()) {
            readGroup();
            m_xml.finish();
        }
        if (!m_xml.isRefused()) {
            resolve();
        }
    }

private:
    /// The nodes below the present element. Groups only put nodes together; the cursor limits how deep they nest.
    void readGroup()
    {
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String("Group")) {
                readGroup();
            } else if (m_xml.name() == QLatin1String("StructReg")) {
                readStruct();
            } else {
                NodeDraft draft = begin();
                readChildren(draft);
                finish(draft);
            }
        }
    }

    NodeDraft begin()
    {
        const NodeKindRule &rule = nodeKindRule(m_xml.name());
        NodeDraft draft;
        draft.info.kind = rule.kind;
        draft.info.tag = rule.tag.isEmpty() ? m_xml.name().left(80).toUtf8() : rule.tag;
        draft.info.name = m_xml.attribute("Name");
        draft.info.line = m_xml.line();
        return draft;
    }

    void readChildren(NodeDraft &draft)
    {
        while (m_xml.nextChild()) {
            readChild(draft);
        }
    }

    void readChild(NodeDraft &draft)
    {
        const NodeKindRule &rule = nodeKindRule(draft.info.kind);
        if (rule.kind == NodeKind::Enumeration && m_xml.name() == QLatin1String("EnumEntry")) {
            NodeProperties::readEntry(m_xml, draft);
        } else if (rule.isRegister() && m_xml.name() == QLatin1String("IntSwissKnife")) {
            readInnerFormula(draft);
        } else {
            NodeProperties::read(m_xml, draft);
        }
        limitParts(draft.parts());
    }

    void limitParts(int more)
    {
        if (m_nParts + more > NodeTableReader::MAX_PARTS) {
            m_xml.refuse(QStringLiteral("it has more than %1 references, entries and names")
                             .arg(NodeTableReader::MAX_PARTS));
        }
    }

    void limitNodes(int count)
    {
        if (count > NodeTableReader::MAX_NODES) {
            m_xml.refuse(
                QStringLiteral("it has more than %1 nodes").arg(NodeTableReader::MAX_NODES));
        }
    }

    void readInnerFormula(NodeDraft &owner)
    {
        NodeDraft draft = begin();
        const QByteArray ownName = draft.info.name;
        // Names are trimmed, so that no reference can spell one with a space in front.
        draft.info.name = " formula " + QByteArray::number(++m_nInnerFormulas) + " in "
            + DescriptionText::shown(owner.info.name);
        readChildren(draft);
        NodeAddress address;
        address.kind = NodeAddress::Kind::Formula;
        address.formula = finish(draft);
        if (!ownName.isEmpty() && !m_innerFormulas.contains(ownName)) {
            m_innerFormulas.insert(ownName, address.formula);
        }
        owner.info.addresses.append(address);
    }

    void readStruct()
    {
        NodeDraft structReg = begin();
        structReg.info.kind = NodeKind::StructEntry;
        structReg.info.name = "a StructReg";
        std::deque<NodeDraft> entries;
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String("StructEntry")) {
                entries.push_back(begin());
                readChildren(entries.back());
                limitNodes(m_pTable->count() + static_cast<int>(entries.size()));
            } else {
                readChild(structReg);
            }
        }
        for (NodeDraft &entry : entries) {
            if (!m_xml.isRefused()) {
                entry.inherit(structReg);
                finish(entry);
            }
        }
    }

    /// Enters the node into the table.
    NodeId finish(NodeDraft &draft)
    {
        if (m_xml.isRefused()) {
            return NO_NODE;
        }
        m_nFormulaText += draft.formula.text.size() + draft.formulaTo.text.size();
        for (const NodeDraft::FormulaText &expression : qAsConst(draft.expressions)) {
            m_nFormulaText += expression.text.size();
        }
        if (m_nFormulaText > MAX_FORMULA_TEXT) {
            m_xml.refuse(QStringLiteral("its formulas are longer than %1 bytes in all")
                             .arg(MAX_FORMULA_TEXT));
            return NO_NODE;
        }
        FormulaBinder(draft).bindAll();
        m_nParts += draft.parts() + 1;
        limitParts(0);
        limitNodes(m_pTable->count() + 1);
        if (draft.info.name.isEmpty()) {
            m_pTable->addFault({draft.info.tag, draft.info.line, "it has no name", false});
            return NO_NODE;
        }
        const NodeId first = m_pTable->find(draft.info.name);
        if (first != NO_NODE) {
            m_pTable->addFault(first, draft.info.line, "the name stands for two nodes");
            return first;
        }
        const NodeId id = m_pTable->add(draft.info);
        for (const NodeDraft::Fault &fault : qAsConst(draft.faults)) {
            m_pTable->addFault(id, fault.line, fault.reason, fault.isHarmless);
        }
        return id;
    }

    void resolve()
    {
        for (NodeId id = 0; id < m_pTable->count(); ++id) {
            NodeInfo &node = m_pTable->at(id);
            for (NodeInfo::Reference &reference : node.references) {
                reference.node = m_pTable->find(reference.target);
                if (reference.node == NO_NODE) {
                    reference.node = m_innerFormulas.value(reference.target, NO_NODE);
                }
            }
            const QVector<NodeInfo::Reference> &references = node.references;
            NodeDraft::changeIds(
                node, [&references](NodeId &place) { place = references.at(place).node; });
        }
        NodeMarks::set(m_pTable);
    }

    DescriptionCursor &m_xml;
    NodeTable *m_pTable;
    QHash<QByteArray, NodeId> m_innerFormulas; ///< those that have a name of their own
    int m_nInnerFormulas = 0;
    qint64 m_nParts = 0;
    qint64 m_nFormulaText = 0;
};

} // namespace

QByteArray NodeTableReader::withoutPadding(const QByteArray &xml)
{
    int size = xml.size();
    while (size > 0 && xml[size - 1] == '\0') {
        --size;
    }
    return xml.left(size);
}

bool NodeTableReader::read(const QByteArray &xml, NodeTable *table, QString *reason, int *line)
{
    if (line) {
        *line = 1;
    }
    if (xml.isEmpty()) {
        *reason = QStringLiteral("The device description is empty.");
        return false;
    }
    if (xml.size() > MAX_SIZE) {
        *reason = QStringLiteral("The device description has %1 bytes; at most %2 are read.")
                      .arg(xml.size())
                      .arg(MAX_SIZE);
        return false;
    }
    DescriptionCursor cursor(xml);
    TableBuilder(cursor, table).build();
    if (!cursor.isRefused()) {
        return true;
    }
    *reason = cursor.reason();
    if (line) {
        *line = cursor.line();
    }
    return false;
}
