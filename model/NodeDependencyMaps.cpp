#include "model/NodeDependencyMaps.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

constexpr int MAX_CHAIN_DEPTH = 1000;
constexpr qint64 NO_CACHE_PERIOD_MS = 2000;
constexpr qint64 POLLING_GRID_MS = 50;

/// How the child elements of a node lead on to what it depends on.
struct ReferenceRow
{
    const char *tagName;
    bool entersInvalidators;
    bool entersVariables;
    bool leadsOn;
};

const ReferenceRow REFERENCES[] = {
    {"pInvalidator", true, false, false}, {"pVariable", true, true, true},
    {"pValue", true, false, true},        {"pMin", false, false, true},
    {"pMax", false, false, true},         {"pInc", false, false, true},
    {"pIsLocked", false, false, true},    {"pIsImplemented", false, false, true},
    {"pIsAvailable", false, false, true},
};

const ReferenceRow *referenceOf(const QString &tagName)
{
    const auto found = std::find_if(std::begin(REFERENCES), std::end(REFERENCES), [&](const ReferenceRow &row) {
        return tagName == QLatin1String(row.tagName);
    });
    return found == std::end(REFERENCES) ? nullptr : found;
}

bool isFeatureTag(const QString &tagName)
{
    static const QSet<QString> tags {QStringLiteral("Enumeration"), QStringLiteral("Integer"), QStringLiteral("Boolean"),
                                     QStringLiteral("Float"),       QStringLiteral("Command"), QStringLiteral("StringReg")};
    return tags.contains(tagName);
}

QString textOf(const QDomElement &element)
{
    return element.text().trimmed();
}

bool childText(const QDomElement *element, const char *tagName, QString &out)
{
    for (QDomElement child = element ? element->firstChildElement() : QDomElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String(tagName)) {
            out = textOf(child);
            return true;
        }
    }
    return false;
}

/// The next element below `top` in document order after `present`, its children first; null at the end.
QDomElement nextElement(QDomElement present, const QDomElement &top)
{
    QDomElement next = present.firstChildElement();
    while (next.isNull() && present != top) {
        next = present.nextSiblingElement();
        present = present.parentNode().toElement();
    }
    return next;
}

/// Appends what is not there yet and keeps the order.
class UniqueList
{
public:
    void add(const QString &text)
    {
        if (!m_known.contains(text)) {
            m_known.insert(text);
            m_list.append(text);
        }
    }
    void add(const QStringList &texts)
    {
        for (const QString &text : texts) {
            add(text);
        }
    }
    const QStringList &list() const { return m_list; }

private:
    QSet<QString> m_known;
    QStringList m_list;
};

/// Nodes that change together with the key though the description does not say so.
struct CompanionRow
{
    const char *node;
    const char *companions[3];
};

const CompanionRow COMPANIONS[] = {
    {"AcquisitionStart", {"AcquisitionStop", "AcquisitionStart", nullptr}},
    {"AcquisitionStop", {"AcquisitionStop", "AcquisitionStart", nullptr}},
    {"DeviceStreamChannelPacketSize", {"GevSCPSPacketSize", "DeviceStreamChannelPacketSize", nullptr}},
    {"GevSCPSPacketSize", {"GevSCPSPacketSize", "DeviceStreamChannelPacketSize", nullptr}},
};

} // namespace

void NodeDependencyMaps::generate(const QDomElement &documentElement, const ElementMap &elements,
                                  const QStringList &itemNames)
{
    m_documentElement = documentElement;
    m_elements = elements;
    m_itemNames = itemNames;
    ResetFeaturesInvalidatorMap();
    GenerateFeaturePValueList();
    GenerateFeaturePairList();
    GenerateFeaturesTLParamsLocked();
    GeneratePSelectedList();
    GenerateFeatureNoCacheList();
    GenerateFeaturePollingList();
    generateInvertedIndex();
}

void NodeDependencyMaps::clear()
{
    generate(QDomElement(), ElementMap(), QStringList());
}

void NodeDependencyMaps::setStopRequested(bool stop)
{
    m_bStopRequested = stop;
}

void NodeDependencyMaps::ResetFeaturesInvalidatorMap()
{
    m_featureInvalidatorMap.clear();
    m_featurePVariableMap.clear();
    GenerateFeaturesInvalidatorMap(m_documentElement);
}

void NodeDependencyMaps::GenerateFeaturesInvalidatorMap(const QDomElement &element)
{
    for (QDomElement present = element; !present.isNull(); present = nextElement(present, element)) {
        if (isFeatureTag(present.tagName())) {
            InsertFeatureInvalidator(present);
        }
    }
}

void NodeDependencyMaps::InsertFeatureInvalidator(const QDomElement &element)
{
    QStringList invalidators;
    QStringList variables;
    QSet<QString> visited;
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString tagName = child.tagName();
        const ReferenceRow *row = referenceOf(tagName);
        if (!row || !row->leadsOn) {
            continue;
        }
        if (row->entersVariables) {
            // A formula of the feature itself: its variables count, what lies behind them does not.
            invalidators.append(textOf(child));
            variables.append(textOf(child));
        } else {
            GenerateInvalidatorListByProperty(textOf(child), invalidators, variables, visited);
        }
    }
    if (!invalidators.isEmpty()) {
        const QString name = element.attribute(QStringLiteral("Name"));
        m_featureInvalidatorMap.insert(name, invalidators);
        m_featurePVariableMap.insert(name, variables);
    }
}

void NodeDependencyMaps::GenerateInvalidatorListByProperty(const QString &name, QStringList &invalidators,
                                                           QStringList &variables, QSet<QString> &visited) const
{
    // With a stack of its own: chains of references come from outside and may be long, shared or circular.
    QVector<QDomElement> nextChildren;
    const auto enter = [&](const QString &node) {
        const QDomElement element = elementOf(node);
        if (element.isNull() || visited.contains(node)) {
            return;
        }
        visited.insert(node);
        if (element.tagName() == QLatin1String("StructEntry")) {
            for (QDomElement sibling = element.previousSiblingElement(); !sibling.isNull();
                 sibling = sibling.previousSiblingElement()) {
                if (sibling.tagName() == QLatin1String("pInvalidator")) {
                    invalidators.append(textOf(sibling));
                }
            }
        }
        nextChildren.append(element.firstChildElement());
    };
    enter(name);
    while (!nextChildren.isEmpty()) {
        const QDomElement child = nextChildren.last();
        if (child.isNull()) {
            nextChildren.removeLast();
            continue;
        }
        nextChildren.last() = child.nextSiblingElement();
        const ReferenceRow *row = referenceOf(child.tagName());
        if (!row) {
            continue;
        }
        const QString text = textOf(child);
        if (row->entersInvalidators) {
            invalidators.append(text);
        }
        if (row->entersVariables) {
            variables.append(text);
        }
        if (row->leadsOn) {
            enter(text);
        }
    }
}

void NodeDependencyMaps::GenerateFeaturePValueList()
{
    m_featurePValueMap.clear();
    for (const QString &name : qAsConst(m_itemNames)) {
        const QDomElement element = elementOf(name);
        QString text;
        if (GetPValueText(&element, text)) {
            m_featurePValueMap.insert(name, text);
        }
    }
}

void NodeDependencyMaps::GenerateFeaturePairList()
{
    m_featurePairMap.clear();
    const QSet<QString> items(m_itemNames.cbegin(), m_itemNames.cend());
    for (auto row = m_featurePValueMap.cbegin(); row != m_featurePValueMap.cend(); ++row) {
        const QDomElement target = elementOf(row.value());
        QString partner;
        if (GetPValueText(&target, partner) && partner != row.key() && items.contains(partner)) {
            m_featurePairMap.insert(row.key(), partner);
            m_featurePairMap.insert(partner, row.key());
        }
    }
}

void NodeDependencyMaps::GenerateFeaturesTLParamsLocked()
{
    m_featuresLockedList.clear();
    for (const QString &name : qAsConst(m_itemNames)) {
        const QDomElement element = elementOf(name);
        QString text;
        if (GetPIsLockedText(&element, text)) {
            m_featuresLockedList.append(name);
        }
    }
}

void NodeDependencyMaps::GeneratePSelectedList()
{
    m_featurePSelectedMap.clear();
    m_pSelectedRecords.clear();
    for (const QString &name : qAsConst(m_itemNames)) {
        QStringList list;
        GenerateFeaturePSelectedList(name, list);
        if (!list.isEmpty()) {
            m_featurePSelectedMap.insert(name, list);
        }
    }
}

void NodeDependencyMaps::GenerateFeaturePSelectedList(const QString &name, QStringList &list)
{
    for (QDomElement child = elementOf(name).firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("pSelected")) {
            list.append(textOf(child));
            m_pSelectedRecords.append({name, textOf(child)});
        }
    }
}

void NodeDependencyMaps::GenerateFeatureNoCacheList()
{
    m_featureNoCacheList.clear();
    for (const QString &name : qAsConst(m_itemNames)) {
        if (IsNoCacheFeature(name)) {
            m_featureNoCacheList.append(name);
        }
    }
}

void NodeDependencyMaps::GenerateFeaturePollingList()
{
    m_featurePollingMap.clear();
    const QSet<QString> noCache(m_featureNoCacheList.cbegin(), m_featureNoCacheList.cend());
    for (const QString &name : qAsConst(m_itemNames)) {
        qint64 period = 0;
        if (!IsPollingFeature(name, period)) {
            if (!noCache.contains(name)) {
                continue;
            }
            period = NO_CACHE_PERIOD_MS;
        }
        if (period < 1) {
            continue; // would never fire
        }
        // One grid, so that few wake-ups serve all features.
        const double steps = std::floor(static_cast<double>(period) / POLLING_GRID_MS + 0.5);
        const qint64 rounded = std::max(POLLING_GRID_MS, static_cast<qint64>(steps) * POLLING_GRID_MS);
        m_featurePollingMap[rounded].append(name);
    }
}

void NodeDependencyMaps::generateInvertedIndex()
{
    const auto invert = [](const QMap<QString, QStringList> &map, QHash<QString, QStringList> &index) {
        index.clear();
        for (auto row = map.cbegin(); row != map.cend(); ++row) {
            for (const QString &text : row.value()) {
                QStringList &users = index[text];
                if (users.isEmpty() || users.last() != row.key()) {
                    users.append(row.key());
                }
            }
        }
    };
    invert(m_featureInvalidatorMap, m_invalidatedBy);
    invert(m_featurePVariableMap, m_usersOfVariable);
}

QStringList NodeDependencyMaps::GetFeatureInvalidatorList(const QString &name) const
{
    if (name == QLatin1String("AlgoRegionIndex")) {
        return {QStringLiteral("AlgoRegionEnable"), QStringLiteral("AlgoRegionHeight"), QStringLiteral("AlgoRegionLeftX"),
                QStringLiteral("AlgoRegionLeftY"),  QStringLiteral("AlgoRegionWidth"),
                QStringLiteral("PollingAlgoROIRegionIndex"), name};
    }
    if (m_bStopRequested) {
        return QStringList();
    }
    // Who has the name in its list, or the node that the name mirrors.
    QStringList invalidated = m_invalidatedBy.value(name);
    const auto mirrored = m_featurePValueMap.constFind(name);
    if (mirrored != m_featurePValueMap.cend()) {
        const QStringList ofMirrored = m_invalidatedBy.value(*mirrored);
        QStringList merged;
        std::set_union(invalidated.cbegin(), invalidated.cend(), ofMirrored.cbegin(), ofMirrored.cend(),
                       std::back_inserter(merged));
        invalidated = merged;
    }
    UniqueList result;
    result.add(invalidated);
    for (const QString &text : qAsConst(invalidated)) {
        QString partner;
        if (GetFeatureInPair(text, partner)) {
            result.add(partner);
        }
    }
    QString partner;
    if (GetFeatureInPair(name, partner)) {
        // The letters one by one, kept so: no node has such a name, and the reader passes over them.
        for (const QChar letter : qAsConst(partner)) {
            result.add(QString(letter));
        }
    }
    if (m_bStopRequested) {
        return QStringList();
    }
    result.add(GetFeaturesHaveSamePVariable(name));
    QList<QString> selected;
    if (GetFeaturePSelectedList(name, selected)) {
        result.add(selected);
    }
    for (const CompanionRow &row : COMPANIONS) {
        for (int i = 0; name == QLatin1String(row.node) && row.companions[i]; ++i) {
            result.add(QString::fromLatin1(row.companions[i]));
        }
    }
    result.add(name);
    if (name == QLatin1String("ContrastEnable")) {
        result.add(QStringLiteral("LineSource"));
    }
    return m_bStopRequested ? QStringList() : result.list();
}

QStringList NodeDependencyMaps::GetFeaturesHaveSamePVariable(const QString &name) const
{
    const QStringList variables = GetFeaturePVariableList(name);
    QMap<QString, bool> found;
    for (const QString &variable : variables) {
        const QStringList users = m_usersOfVariable.value(variable);
        for (const QString &user : users) {
            if (user != variable) {
                found.insert(user, true);
            }
        }
    }
    return found.keys();
}

QStringList NodeDependencyMaps::GetFeaturePVariableList(const QString &name) const
{
    return m_featurePVariableMap.value(name);
}

bool NodeDependencyMaps::GetFeaturePSelectedList(const QString &name, QList<QString> &out) const
{
    const auto found = m_featurePSelectedMap.constFind(name);
    if (found == m_featurePSelectedMap.cend()) {
        return false;
    }
    out = *found;
    return true;
}

QStringList NodeDependencyMaps::GetFeaturesNameByPValue(const QString &pValue) const
{
    return m_featurePValueMap.keys(pValue);
}

bool NodeDependencyMaps::GetFeatureInPair(const QString &name, QString &out) const
{
    const auto found = m_featurePairMap.constFind(name);
    if (found == m_featurePairMap.cend()) {
        return false;
    }
    out = *found;
    return true;
}

bool NodeDependencyMaps::IsFeatureInQList(const QString &name, const QStringList &list) const
{
    const auto mirrored = m_featurePValueMap.constFind(name);
    return list.contains(name) || (mirrored != m_featurePValueMap.cend() && list.contains(*mirrored));
}

bool NodeDependencyMaps::IsNoCacheFeature(const QString &name) const
{
    QSet<QString> visited;
    return isNoCache(name, visited);
}

bool NodeDependencyMaps::isNoCache(const QString &name, QSet<QString> &visited) const
{
    if (visited.contains(name) || visited.size() >= MAX_CHAIN_DEPTH) {
        return false;
    }
    visited.insert(name);
    for (QDomElement child = elementOf(name).firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString tagName = child.tagName();
        if (tagName == QLatin1String("pValue") || tagName == QLatin1String("pVariable")) {
            if (isNoCache(textOf(child), visited)) {
                return true;
            }
        } else if (tagName == QLatin1String("Cachable") && textOf(child) == QLatin1String("NoCache")) {
            return true;
        }
    }
    return false;
}

bool NodeDependencyMaps::IsPollingFeature(const QString &name, qint64 &period) const
{
    QSet<QString> visited;
    return isPolling(name, period, visited);
}

bool NodeDependencyMaps::isPolling(const QString &name, qint64 &period, QSet<QString> &visited) const
{
    if (visited.contains(name) || visited.size() >= MAX_CHAIN_DEPTH) {
        return false;
    }
    visited.insert(name);
    for (QDomElement child = elementOf(name).firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString tagName = child.tagName();
        const QString text = textOf(child);
        if (tagName == QLatin1String("pValue") || tagName == QLatin1String("pVariable")) {
            if (isPolling(text, period, visited)) {
                return true;
            }
        } else if (tagName == QLatin1String("PollingTime") && !text.isEmpty()) {
            bool converts = false;
            period = text.toLongLong(&converts);
            return converts;
        }
    }
    return false;
}

bool NodeDependencyMaps::GetPValueText(const QDomElement *element, QString &out)
{
    return childText(element, "pValue", out);
}

bool NodeDependencyMaps::GetPIsLockedText(const QDomElement *element, QString &out)
{
    return childText(element, "pIsLocked", out);
}

bool NodeDependencyMaps::GetFeatureNode(const QString &name, const QDomElement &parent, QDomElement &out)
{
    for (QDomElement present = parent.firstChildElement(); !present.isNull(); present = nextElement(present, parent)) {
        if (present.attribute(QStringLiteral("Name")) == name) {
            out = present;
            return true;
        }
    }
    return false;
}

QString NodeDependencyMaps::GetValueAccessMode(const QDomElement &element)
{
    QString text;
    if (!childText(&element, "ImposedAccessMode", text)) {
        childText(&element, "AccessMode", text);
    }
    return text;
}
