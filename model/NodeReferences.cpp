#include "model/NodeReferences.h"

#include "model/ElementWalk.h"

#include <QDebug>
#include <QSet>

#include <algorithm>

namespace {

const ReferenceKind *kindOf(const QString &strTagName)
{
    static const QHash<QString, ReferenceKind> kinds{
        {QStringLiteral("pValue"), ReferenceKind::PValue},
        {QStringLiteral("pMin"), ReferenceKind::PMin},
        {QStringLiteral("pMax"), ReferenceKind::PMax},
        {QStringLiteral("pInc"), ReferenceKind::PInc},
        {QStringLiteral("pIsLocked"), ReferenceKind::PIsLocked},
        {QStringLiteral("pIsImplemented"), ReferenceKind::PIsImplemented},
        {QStringLiteral("pIsAvailable"), ReferenceKind::PIsAvailable},
        {QStringLiteral("pVariable"), ReferenceKind::PVariable},
        {QStringLiteral("pInvalidator"), ReferenceKind::PInvalidator},
        {QStringLiteral("pSelected"), ReferenceKind::PSelected},
        {QStringLiteral("Cachable"), ReferenceKind::Cachable},
        {QStringLiteral("PollingTime"), ReferenceKind::PollingTime},
    };
    const auto found = kinds.constFind(strTagName);
    return found == kinds.cend() ? nullptr : &*found;
}

bool isFeatureTag(const QString &strTagName)
{
    static const QSet<QString> tags{QStringLiteral("Enumeration"), QStringLiteral("Integer"),
                                    QStringLiteral("Boolean"),     QStringLiteral("Float"),
                                    QStringLiteral("Command"),     QStringLiteral("StringReg")};
    return tags.contains(strTagName);
}

} // namespace

void NodeReferences::build(const QDomElement &documentElement,
                           const QMap<QString, QDomElement> &elements)
{
    *this = NodeReferences();
    for (auto row = elements.cbegin(); row != elements.cend(); ++row) {
        if (!row->isNull()) {
            const int nName = numberOf(row.key());
            m_nodesOfTexts[nName] = addNode(*row);
        }
    }
    for (QDomElement element = documentElement; !element.isNull();
         element = ElementWalk::next(element, documentElement)) {
        if (!isFeatureTag(element.tagName())) {
            continue;
        }
        const QString strName = ElementWalk::name(element);
        const int nName = numberOf(strName);
        // Of two nodes with one name the map holds the later; the earlier is a feature all the same.
        const bool bInMap = elements.value(strName) == element;
        m_features.append({nName, bInMap ? m_nodesOfTexts.at(nName) : addNode(element)});
    }
}

int NodeReferences::numberOf(const QString &strText)
{
    const auto found = m_textNumbers.constFind(strText);
    if (found != m_textNumbers.cend()) {
        return *found;
    }
    const int nText = m_texts.size();
    m_textNumbers.insert(strText, nText);
    m_texts.append(strText);
    m_nodesOfTexts.append(-1);
    return nText;
}

int NodeReferences::addNode(const QDomElement &element)
{
    const int nNode = m_firstReferences.size();
    m_firstReferences.append(m_references.size());
    if (element.tagName() == QLatin1String("StructEntry")) {
        addStructInvalidators(element);
    }
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (const ReferenceKind *kind = kindOf(child.tagName())) {
            m_references.append({*kind, numberOf(ElementWalk::text(child))});
        }
    }
    return nNode;
}

void NodeReferences::addStructInvalidators(const QDomElement &entry)
{
    for (QDomElement sibling = entry.previousSiblingElement();
         !sibling.isNull() && m_nSiblingSteps < ReferenceWalk::MAX_STEPS;
         sibling = sibling.previousSiblingElement()) {
        if (++m_nSiblingSteps == ReferenceWalk::MAX_STEPS) {
            qWarning("Structured registers have too many entries; the invalidators of the last "
                     "ones are left out.");
        }
        if (sibling.tagName() == QLatin1String("pInvalidator")) {
            m_references.append(
                {ReferenceKind::StructInvalidator, numberOf(ElementWalk::text(sibling))});
        }
    }
}

const NodeReference *NodeReferences::begin(int nNode) const
{
    return nNode < 0 ? m_references.constData()
                     : m_references.constData() + m_firstReferences.at(nNode);
}

const NodeReference *NodeReferences::end(int nNode) const
{
    if (nNode < 0) {
        return m_references.constData();
    }
    return nNode + 1 < nodeCount() ? begin(nNode + 1)
                                   : m_references.constData() + m_references.size();
}

bool NodeReferences::findText(int nNode, ReferenceKind kind, QString &out) const
{
    const NodeReference *found = std::find_if(
        begin(nNode), end(nNode), [kind](const NodeReference &row) { return row.kind == kind; });
    if (found == end(nNode)) {
        return false;
    }
    out = text(found->text);
    return true;
}

ReferenceWalk::ReferenceWalk(const NodeReferences &references)
    : m_references(references)
    , m_enteredIn(references.nodeCount(), -1)
{
}

void ReferenceWalk::restart()
{
    m_stack.clear();
    ++m_nWalk;
}

void ReferenceWalk::enter(int nNode)
{
    if (nNode >= 0 && m_enteredIn.at(nNode) != m_nWalk) {
        m_enteredIn[nNode] = m_nWalk;
        m_stack.append(Range{m_references.begin(nNode), m_references.end(nNode)});
    }
}

const NodeReference *ReferenceWalk::next()
{
    while (!m_stack.isEmpty() && !isExhausted()) {
        Range &range = m_stack.last();
        if (range.next != range.end) {
            ++m_nSteps;
            return range.next++;
        }
        m_stack.removeLast();
    }
    return nullptr;
}

void ReferenceWalk::leave()
{
    if (!m_stack.isEmpty()) {
        m_stack.removeLast();
    }
}
