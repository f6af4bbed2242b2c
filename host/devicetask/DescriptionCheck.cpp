#include "host/devicetask/DescriptionCheck.h"

#include <QVector>
#include <QXmlStreamReader>

#include <optional>

namespace {

/// Elements nest four deep in a sound description. What reads the tree later recurses over it.
constexpr int MAX_NESTING = 64;
/// The XML parser below Aravis gives up on longer texts and then keeps the part before them.
constexpr int MAX_TEXT = 9 * 1000 * 1000;

/// References that evaluation follows. pInvalidator, pSelected and pFeature are not among them.
struct ReferenceRule
{
    const char *tag;
    ReferenceKind kind;
};

const ReferenceRule REFERENCE_RULES[] = {
    {"pValue", ReferenceKind::Number},
    {"pMin", ReferenceKind::Number},
    {"pMax", ReferenceKind::Number},
    {"pInc", ReferenceKind::Number},
    {"pIsImplemented", ReferenceKind::Condition},
    {"pIsAvailable", ReferenceKind::Condition},
    {"pIsLocked", ReferenceKind::Condition},
    {"pVariable", ReferenceKind::Number},
    {"pAddress", ReferenceKind::Number},
    {"pIndex", ReferenceKind::Number},
    {"pLength", ReferenceKind::Number},
    {"pOffset", ReferenceKind::Number},
    {"pValueIndexed", ReferenceKind::Number},
    {"pValueDefault", ReferenceKind::Number},
    {"pCommandValue", ReferenceKind::Number},
    {"pPort", ReferenceKind::Port},
};

const char *const VALUE_TAGS[] = {"Value",         "pValue",       "ValueIndexed",
                                  "pValueIndexed", "ValueDefault", "pValueDefault"};
const char *const RANGE_TAGS[] = {"Min", "Max", "pMin", "pMax"};

template<std::size_t N>
bool isOneOf(const char *const (&tags)[N], const QByteArray &tag)
{
    for (const char *candidate : tags) {
        if (tag == candidate) {
            return true;
        }
    }
    return false;
}

const ReferenceRule *ruleOf(const QByteArray &tag)
{
    for (const ReferenceRule &rule : REFERENCE_RULES) {
        if (tag == rule.tag) {
            return &rule;
        }
    }
    return nullptr;
}

/// As Aravis reads numbers: decimal, 0x hexadecimal or 0 octal; -1 for what is none.
qint64 numberOf(const QByteArray &text)
{
    bool ok = false;
    const qint64 number = text.trimmed().toLongLong(&ok, 0);
    return ok ? number : -1;
}

/// Builds the index while the elements go by.
class IndexBuilder
{
public:
    explicit IndexBuilder(DescriptionIndex *index)
        : m_pIndex(index)
    {
    }

    void start(const QXmlStreamReader &xml)
    {
        const QByteArray tag = xml.name().toUtf8();
        const QByteArray name = xml.attributes().value(QLatin1String("Name")).toUtf8();
        ++m_nDepth;
        m_text.clear();
        const bool isContainer = m_nDepth == 1 || (tag == "Group" && !m_node);
        if (isContainer) {
            return;
        }
        if (!m_node && tag == "StructReg") {
            m_struct = NodeInfo();
            m_struct->tag = tag;
            m_structNames.clear();
            m_structEntries.clear();
            m_nStructDepth = m_nDepth;
        } else if (!m_node && (!m_struct || tag == "StructEntry")) {
            m_node = NodeInfo();
            m_node->tag = tag;
            m_name = name;
            m_nNodeDepth = m_nDepth;
        }
        const QByteArray offset = xml.attributes().value(QLatin1String("pOffset")).toUtf8();
        if (NodeInfo *owner = currentOwner(); owner && !offset.isEmpty()) {
            owner->references.append({ReferenceKind::Number, offset});
        }
    }

    void text(const QXmlStreamReader &xml) { m_text += xml.text().toUtf8(); }

    void end(const QXmlStreamReader &xml)
    {
        if (m_node && m_nDepth == m_nNodeDepth) {
            endNode();
        } else if (m_struct && m_nDepth == m_nStructDepth) {
            endStruct();
        } else if (NodeInfo *owner = currentOwner()) {
            const int ownerDepth = m_node ? m_nNodeDepth : m_nStructDepth;
            property(*owner, xml.name().toUtf8(), m_text, m_nDepth == ownerDepth + 1);
        }
        m_text.clear();
        --m_nDepth;
    }

private:
    NodeInfo *currentOwner()
    {
        if (m_node) {
            return &*m_node;
        }
        return m_struct ? &*m_struct : nullptr;
    }

    void endNode()
    {
        if (m_struct) {
            m_structNames.append(m_name);
            m_structEntries.append(*m_node);
        } else if (!m_name.isEmpty()) {
            m_pIndex->add(m_name, *m_node);
        }
        m_node.reset();
    }

    void endStruct()
    {
        for (int i = 0; i < m_structEntries.size(); ++i) {
            NodeInfo &entry = m_structEntries[i];
            entry.references += m_struct->references;
            entry.implementedBy += m_struct->implementedBy;
            entry.availableBy += m_struct->availableBy;
            entry.lockedBy += m_struct->lockedBy;
            entry.length = m_struct->length;
            entry.hasLength = m_struct->hasLength;
            entry.hasPort = m_struct->hasPort;
            if (!m_structNames[i].isEmpty()) {
                m_pIndex->add(m_structNames[i], entry);
            }
        }
        m_struct.reset();
    }

    /// `direct` tells a property of the node itself from one of an EnumEntry or a formula inside it.
    static void property(NodeInfo &node, const QByteArray &tag, const QByteArray &text, bool direct)
    {
        if (const ReferenceRule *rule = ruleOf(tag)) {
            const bool isText = direct && tag == "pValue" && node.tag == "String";
            node.references.append({isText ? ReferenceKind::Text : rule->kind, text});
        }
        if (!direct) {
            return;
        }
        node.hasValue = node.hasValue || isOneOf(VALUE_TAGS, tag);
        node.hasRange = node.hasRange || isOneOf(RANGE_TAGS, tag);
        node.hasPort = node.hasPort || tag == "pPort";
        if (tag == "pValue") {
            node.valueTarget = text;
        } else if (tag == "pIsImplemented") {
            node.implementedBy.append(text);
        } else if (tag == "pIsAvailable") {
            node.availableBy.append(text);
        } else if (tag == "pIsLocked") {
            node.lockedBy.append(text);
        } else if (tag == "pVariable") {
            node.variables.append(text);
        } else if (tag == "Length" || tag == "pLength") {
            node.hasLength = true;
            if (tag == "Length") {
                // A length that is no number counts as 0, which no kind of register takes.
                node.length = qMax<qint64>(numberOf(text), 0);
            }
        } else if (tag == "LSB" || tag == "Bit") {
            node.lsb = numberOf(text);
            if (tag == "Bit") {
                node.msb = node.lsb;
            }
        } else if (tag == "MSB") {
            node.msb = numberOf(text);
        } else if (tag == "Sign") {
            node.isSigned = text.trimmed() == "Signed";
        }
    }

    DescriptionIndex *m_pIndex;
    std::optional<NodeInfo> m_node;
    std::optional<NodeInfo> m_struct;
    QVector<QByteArray> m_structNames;
    QVector<NodeInfo> m_structEntries;
    QByteArray m_name;
    QByteArray m_text;
    int m_nDepth = 0;
    int m_nNodeDepth = 0;
    int m_nStructDepth = 0;
};

} // namespace

QByteArray DescriptionCheck::withoutPadding(const QByteArray &xml)
{
    int size = xml.size();
    while (size > 0 && xml[size - 1] == '\0') {
        --size;
    }
    return xml.left(size);
}

bool DescriptionCheck::check(const QByteArray &xml, DescriptionIndex *index, QString *reason)
{
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
    QXmlStreamReader reader(xml);
    // Aravis looks at the plain names of the elements, whatever their namespaces are.
    reader.setNamespaceProcessing(false);
    IndexBuilder builder(index);
    int nesting = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++nesting == 1 && reader.name() != QLatin1String("RegisterDescription")) {
                reader.raiseError(
                    QStringLiteral("the first element is <%1>, not <RegisterDescription>")
                        .arg(reader.name().toString()));
            } else if (nesting > MAX_NESTING) {
                reader.raiseError(QStringLiteral("elements nest deeper than %1").arg(MAX_NESTING));
            }
            builder.start(reader);
            break;
        case QXmlStreamReader::EndElement:
            --nesting;
            builder.end(reader);
            break;
        case QXmlStreamReader::Characters:
            builder.text(reader);
            break;
        case QXmlStreamReader::DTD:
            reader.raiseError(QStringLiteral("it brings a document type"));
            break;
        default:
            break;
        }
        if (reader.text().size() > MAX_TEXT) {
            reader.raiseError(QStringLiteral("a text in it is too long"));
        }
    }
    if (reader.hasError()) {
        QString error = reader.errorString();
        if (error.endsWith('.')) {
            error.chop(1);
        }
        *reason = QStringLiteral("The device description is not usable: line %1, column %2: %3.")
                      .arg(reader.lineNumber())
                      .arg(reader.columnNumber())
                      .arg(error);
        return false;
    }
    return true;
}
