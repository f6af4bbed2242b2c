// The look-ups. How the maps come about is in NodeDependencyMapsGenerate.cpp.

#include "model/NodeDependencyMaps.h"

#include "model/ElementWalk.h"
#include "model/NodeDependencyMapsData.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace {

/// Nodes that change together though the description does not say so.
struct CompanionRow
{
    const char *node;
    const char *companions[2];
};

const CompanionRow companionRows[] = {
    {"AcquisitionStart", {"AcquisitionStop", "AcquisitionStart"}},
    {"AcquisitionStop", {"AcquisitionStop", "AcquisitionStart"}},
    {"DeviceStreamChannelPacketSize", {"GevSCPSPacketSize", "DeviceStreamChannelPacketSize"}},
    {"GevSCPSPacketSize", {"GevSCPSPacketSize", "DeviceStreamChannelPacketSize"}},
};

bool childText(const QDomElement *pElement, const char *tagName, QString &out)
{
    const QDomElement child =
        pElement ? pElement->firstChildElement(QString::fromLatin1(tagName)) : QDomElement();
    if (child.isNull()) {
        return false;
    }
    out = ElementWalk::text(child);
    return true;
}

} // namespace

/// A list that takes each text once and keeps the order. Keys of the invalidator map go by their numbers.
class NodeDependencyMaps::Answer
{
public:
    explicit Answer(const Data &data)
        : m_data(data)
        , m_heldKeys(data.m_keys.size(), false)
    {
    }
    void addKey(int nKey)
    {
        if (!m_heldKeys.at(nKey)) {
            m_heldKeys[nKey] = true;
            m_list.append(m_data.m_keys.at(nKey));
        }
    }
    void add(const QString &strText)
    {
        const int nKey = m_data.m_keyNumbers.value(strText, -1);
        if (nKey >= 0) {
            addKey(nKey);
        } else if (!m_heldTexts.contains(strText)) {
            m_heldTexts.insert(strText);
            m_list.append(strText);
        }
    }
    const QStringList &list() const { return m_list; }

private:
    const Data &m_data;
    QVector<bool> m_heldKeys;
    QSet<QString> m_heldTexts;
    QStringList m_list;
};

NodeDependencyMaps::NodeDependencyMaps()
    : d(new Data)
    , m_bStopRequested(std::make_shared<std::atomic<bool>>(false))
{
}

NodeDependencyMaps::~NodeDependencyMaps() = default;
NodeDependencyMaps::NodeDependencyMaps(const NodeDependencyMaps &other) = default;
NodeDependencyMaps &NodeDependencyMaps::operator=(const NodeDependencyMaps &other) = default;

void NodeDependencyMaps::clear()
{
    d = new Data;
}

void NodeDependencyMaps::setStopRequested(bool bStop)
{
    *m_bStopRequested = bStop;
}

bool NodeDependencyMaps::isStopRequested() const
{
    return *m_bStopRequested;
}

QStringList NodeDependencyMaps::GetFeatureInvalidatorList(const QString &strName) const
{
    if (strName == QLatin1String("AlgoRegionIndex")) {
        return {QStringLiteral("AlgoRegionEnable"),
                QStringLiteral("AlgoRegionHeight"),
                QStringLiteral("AlgoRegionLeftX"),
                QStringLiteral("AlgoRegionLeftY"),
                QStringLiteral("AlgoRegionWidth"),
                QStringLiteral("PollingAlgoROIRegionIndex"),
                strName};
    }
    if (isStopRequested()) {
        return {};
    }
    const Data &data = *d;
    // Who has the name in its list, or the node that the name mirrors.
    QVector<int> invalidated = data.m_keysInvalidatedBy.value(strName);
    const auto mirrored = data.m_featurePValueMap.constFind(strName);
    if (mirrored != data.m_featurePValueMap.cend()) {
        const QVector<int> byMirrored = data.m_keysInvalidatedBy.value(*mirrored);
        QVector<int> both;
        both.reserve(invalidated.size() + byMirrored.size());
        std::set_union(invalidated.cbegin(), invalidated.cend(), byMirrored.cbegin(),
                       byMirrored.cend(), std::back_inserter(both));
        invalidated.swap(both);
    }
    Answer answer(data);
    for (const int nKey : qAsConst(invalidated)) {
        if (isStopRequested()) {
            return {};
        }
        answer.addKey(nKey);
    }
    for (const int nKey : qAsConst(invalidated)) {
        if (isStopRequested()) {
            return {};
        }
        if (!data.m_partners.at(nKey).isNull()) {
            answer.add(data.m_partners.at(nKey));
        }
    }
    // The letters of the partner one by one, kept so: no node has such a name, and the reader passes over them.
    const QString strPartner = data.m_featurePairMap.value(strName);
    for (const QChar letter : strPartner) {
        answer.add(QString(letter));
    }
    const QStringList sharers = GetFeaturesHaveSamePVariable(strName);
    const QStringList selected = data.m_featurePSelectedMap.value(strName);
    for (const QStringList *pTexts : {&sharers, &selected}) {
        for (const QString &strText : *pTexts) {
            if (isStopRequested()) {
                return {};
            }
            answer.add(strText);
        }
    }
    for (const CompanionRow &row : companionRows) {
        if (strName == QLatin1String(row.node)) {
            answer.add(QString::fromLatin1(row.companions[0]));
            answer.add(QString::fromLatin1(row.companions[1]));
        }
    }
    answer.add(strName);
    if (strName == QLatin1String("ContrastEnable")) {
        answer.add(QStringLiteral("LineSource"));
    }
    return isStopRequested() ? QStringList() : answer.list();
}

QStringList NodeDependencyMaps::GetFeaturesHaveSamePVariable(const QString &strName) const
{
    const Data &data = *d;
    QStringList variables = data.m_featurePVariableMap.value(strName);
    variables.removeDuplicates();
    QVector<int> sharers;
    for (const QString &strVariable : qAsConst(variables)) {
        for (const int nKey : data.m_keysWithVariable.value(strVariable)) {
            if (data.m_keys.at(nKey) != strVariable) {
                sharers.append(nKey);
            }
        }
    }
    if (variables.size() > 1) {
        std::sort(sharers.begin(), sharers.end());
        sharers.erase(std::unique(sharers.begin(), sharers.end()), sharers.end());
    }
    QStringList names;
    names.reserve(sharers.size());
    for (const int nKey : qAsConst(sharers)) {
        names.append(data.m_keys.at(nKey));
    }
    return names;
}

QStringList NodeDependencyMaps::GetFeaturePVariableList(const QString &strName) const
{
    return d->m_featurePVariableMap.value(strName);
}

bool NodeDependencyMaps::GetFeaturePSelectedList(const QString &strName, QList<QString> &out) const
{
    const auto found = d->m_featurePSelectedMap.constFind(strName);
    if (found == d->m_featurePSelectedMap.cend()) {
        return false;
    }
    out = *found;
    return true;
}

QStringList NodeDependencyMaps::GetFeaturesNameByPValue(const QString &strPValue) const
{
    return d->m_featurePValueMap.keys(strPValue);
}

bool NodeDependencyMaps::GetFeatureInPair(const QString &strName, QString &out) const
{
    const auto found = d->m_featurePairMap.constFind(strName);
    if (found == d->m_featurePairMap.cend()) {
        return false;
    }
    out = *found;
    return true;
}

bool NodeDependencyMaps::IsFeatureInQList(const QString &strName, const QStringList &list) const
{
    const auto mirrored = d->m_featurePValueMap.constFind(strName);
    return list.contains(strName)
        || (mirrored != d->m_featurePValueMap.cend() && list.contains(*mirrored));
}

bool NodeDependencyMaps::IsNoCacheFeature(const QString &strName) const
{
    ReferenceWalk walk(d->m_references);
    return d->isNoCache(strName, walk);
}

bool NodeDependencyMaps::IsPollingFeature(const QString &strName, qint64 &nPeriod) const
{
    ReferenceWalk walk(d->m_references);
    return d->isPolling(strName, nPeriod, walk);
}

bool NodeDependencyMaps::GetPValueText(const QDomElement *pElement, QString &out)
{
    return childText(pElement, "pValue", out);
}

bool NodeDependencyMaps::GetPIsLockedText(const QDomElement *pElement, QString &out)
{
    return childText(pElement, "pIsLocked", out);
}

bool NodeDependencyMaps::GetFeatureNode(const QString &strName, const QDomElement &parent,
                                        QDomElement &out)
{
    for (QDomElement element = ElementWalk::next(parent, parent); !element.isNull();
         element = ElementWalk::next(element, parent)) {
        if (ElementWalk::name(element) == strName) {
            out = element;
            return true;
        }
    }
    return false;
}

QString NodeDependencyMaps::GetValueAccessMode(const QDomElement &element)
{
    QString strMode;
    if (!childText(&element, "ImposedAccessMode", strMode)) {
        childText(&element, "AccessMode", strMode);
    }
    return strMode;
}

const QStringList &NodeDependencyMaps::lockedList() const
{
    return d->m_featuresLockedList;
}

const QStringList &NodeDependencyMaps::noCacheList() const
{
    return d->m_featureNoCacheList;
}

const NodeDependencyMaps::PollingMap &NodeDependencyMaps::pollingMap() const
{
    return d->m_featurePollingMap;
}

const QMap<QString, QStringList> &NodeDependencyMaps::invalidatorMap() const
{
    return d->m_featureInvalidatorMap;
}

const QVector<QPair<QString, QString>> &NodeDependencyMaps::pSelectedRecords() const
{
    return d->m_pSelectedRecords;
}
