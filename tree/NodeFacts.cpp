#include "tree/NodeFacts.h"

#include <QMutexLocker>

namespace {

/// Puts the text of a child element into the field of its tag.
struct ChildField
{
    const char *tagName;
    QString *text;
    bool trimmed; ///< a display name may begin with a blank on purpose
};

template<size_t Count>
void readChild(const QDomElement &child, const ChildField (&fields)[Count])
{
    const QString tagName = child.tagName();
    for (const ChildField &field : fields) {
        if (tagName == QLatin1String(field.tagName)) {
            *field.text = field.trimmed ? child.text().trimmed() : child.text();
            return;
        }
    }
}

EnumEntryFacts entryFacts(const QDomElement &element)
{
    EnumEntryFacts facts;
    facts.name = element.attribute(QStringLiteral("Name"));
    facts.nameSpace = element.attribute(QStringLiteral("NameSpace"));
    facts.visibility = QStringLiteral("Beginner");
    const ChildField fields[] = {
        {"DisplayName", &facts.displayName, false}, {"Visibility", &facts.visibility, true},
        {"Value", &facts.valueText, true},          {"pIsImplemented", &facts.isImplemented, true},
        {"pIsAvailable", &facts.isAvailable, true}, {"pIsLocked", &facts.isLocked, true},
    };
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        readChild(child, fields);
    }
    return facts;
}

} // namespace

NodeFacts::NodeFacts(const QDomElement &element)
    : name(element.attribute(QStringLiteral("Name")))
    , tagName(element.tagName())
    , nameSpace(element.attribute(QStringLiteral("NameSpace")))
    , streamable(QStringLiteral("No"))
    , visibility(QStringLiteral("Beginner"))
{
    const ChildField fields[] = {
        {"DisplayName", &displayName, false}, {"Description", &description, false},
        {"Streamable", &streamable, true},    {"Representation", &representation, true},
        {"Visibility", &visibility, true},    {"pIsImplemented", &isImplemented, true},
        {"pIsAvailable", &isAvailable, true}, {"pIsLocked", &isLocked, true},
    };
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("EnumEntry")) {
            entries.append(entryFacts(child));
        } else {
            readChild(child, fields);
        }
    }
}

NodeFactsTable::NodeFactsTable(const QMap<QString, QDomElement> &elements)
    : m_elements(elements)
{
}

const NodeFacts *NodeFactsTable::find(const QString &name)
{
    const QMutexLocker locker(&m_mutex);
    const auto known = m_facts.find(name);
    if (known != m_facts.cend()) {
        return &known->second;
    }
    const QDomElement element = m_elements.value(name);
    return element.isNull() ? nullptr : &m_facts.emplace(name, element).first->second;
}
