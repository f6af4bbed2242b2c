// Working the maps out. The look-ups are in NodeDependencyMaps.cpp.

#include "model/NodeDependencyMapsData.h"

#include <QDebug>
#include <QSet>

#include <algorithm>

namespace {

constexpr qint64 NO_CACHE_PERIOD_MS = 2000;
constexpr qint64 POLLING_GRID_MS = 50;

/// What a reference of a node does to the lists of the feature that reaches it.
struct ReferenceEffect
{
    bool entersInvalidators;
    bool entersVariables;
    bool leadsOn;
};

ReferenceEffect effectOf(ReferenceKind kind)
{
    switch (kind) {
    case ReferenceKind::PInvalidator:
    case ReferenceKind::StructInvalidator:
        return {true, false, false};
    case ReferenceKind::PVariable:
        return {true, true, true};
    case ReferenceKind::PValue:
        return {true, false, true};
    case ReferenceKind::PMin:
    case ReferenceKind::PMax:
    case ReferenceKind::PInc:
    case ReferenceKind::PIsLocked:
    case ReferenceKind::PIsImplemented:
    case ReferenceKind::PIsAvailable:
        return {false, false, true};
    case ReferenceKind::PSelected:
    case ReferenceKind::Cachable:
    case ReferenceKind::PollingTime:
        break;
    }
    return {false, false, false};
}

} // namespace

void NodeDependencyMaps::generate(const QDomElement &documentElement, const ElementMap &elements,
                                  const QStringList &itemNames)
{
    clear();
    d->m_references.build(documentElement, elements);
    d->m_itemNames = itemNames;
    ReferenceWalk walk(d->m_references);
    ResetFeaturesInvalidatorMap(walk);
    GenerateFeaturePValueList();
    GenerateFeaturePairList();
    GenerateFeaturesTLParamsLocked();
    GeneratePSelectedList();
    GenerateFeatureNoCacheList(walk);
    GenerateFeaturePollingList(walk);
    generateIndex();
    if (walk.isExhausted()) {
        qWarning("The nodes of the description refer to each other without end; some dependants "
                 "stay unknown.");
    }
}

void NodeDependencyMaps::ResetFeaturesInvalidatorMap(ReferenceWalk &walk)
{
    d->m_featureInvalidatorMap.clear();
    d->m_featurePVariableMap.clear();
    GenerateFeaturesInvalidatorMap(walk);
}

void NodeDependencyMaps::GenerateFeaturesInvalidatorMap(ReferenceWalk &walk)
{
    for (const NodeReferences::Feature &feature : d->m_references.features()) {
        InsertFeatureInvalidator(feature.nameText, feature.node, walk);
    }
}

void NodeDependencyMaps::InsertFeatureInvalidator(int nName, int nNode, ReferenceWalk &walk)
{
    const NodeReferences &references = d->m_references;
    QStringList invalidators;
    QStringList variables;
    walk.restart();
    for (const NodeReference *row = references.begin(nNode); row != references.end(nNode); ++row) {
        const ReferenceEffect effect = effectOf(row->kind);
        if (!effect.leadsOn) {
            continue;
        }
        if (effect.entersVariables) {
            // A formula of the feature itself: its variables count, what lies behind them does not.
            invalidators.append(references.text(row->text));
            variables.append(references.text(row->text));
            continue;
        }
        walk.enter(references.nodeOf(row->text));
        while (const NodeReference *below = walk.next()) {
            const ReferenceEffect effectBelow = effectOf(below->kind);
            if (effectBelow.entersInvalidators) {
                invalidators.append(references.text(below->text));
            }
            if (effectBelow.entersVariables) {
                variables.append(references.text(below->text));
            }
            if (effectBelow.leadsOn) {
                walk.enter(references.nodeOf(below->text));
            }
        }
    }
    if (!invalidators.isEmpty()) {
        d->m_featureInvalidatorMap.insert(references.text(nName), invalidators);
        d->m_featurePVariableMap.insert(references.text(nName), variables);
    }
}

void NodeDependencyMaps::GenerateFeaturePValueList()
{
    Data &data = *d;
    data.m_featurePValueMap.clear();
    for (const QString &strName : qAsConst(data.m_itemNames)) {
        QString strPValue;
        if (data.m_references.findText(data.m_references.nodeOf(strName), ReferenceKind::PValue,
                                       strPValue)) {
            data.m_featurePValueMap.insert(strName, strPValue);
        }
    }
}

void NodeDependencyMaps::GenerateFeaturePairList()
{
    Data &data = *d;
    data.m_featurePairMap.clear();
    const QSet<QString> items(data.m_itemNames.cbegin(), data.m_itemNames.cend());
    for (auto row = data.m_featurePValueMap.cbegin(); row != data.m_featurePValueMap.cend();
         ++row) {
        QString strPartner;
        if (data.m_references.findText(data.m_references.nodeOf(row.value()), ReferenceKind::PValue,
                                       strPartner)
            && strPartner != row.key() && items.contains(strPartner)) {
            data.m_featurePairMap.insert(row.key(), strPartner);
            data.m_featurePairMap.insert(strPartner, row.key());
        }
    }
}

void NodeDependencyMaps::GenerateFeaturesTLParamsLocked()
{
    Data &data = *d;
    data.m_featuresLockedList.clear();
    for (const QString &strName : qAsConst(data.m_itemNames)) {
        QString strLock;
        if (data.m_references.findText(data.m_references.nodeOf(strName), ReferenceKind::PIsLocked,
                                       strLock)) {
            data.m_featuresLockedList.append(strName);
        }
    }
}

void NodeDependencyMaps::GeneratePSelectedList()
{
    d->m_featurePSelectedMap.clear();
    d->m_pSelectedRecords.clear();
    const QStringList names = d->m_itemNames;
    for (const QString &strName : names) {
        QStringList list;
        GenerateFeaturePSelectedList(strName, list);
        if (!list.isEmpty()) {
            d->m_featurePSelectedMap.insert(strName, list);
        }
    }
}

void NodeDependencyMaps::GenerateFeaturePSelectedList(const QString &strName, QStringList &list)
{
    Data &data = *d;
    const NodeReferences &references = data.m_references;
    const int nNode = references.nodeOf(strName);
    for (const NodeReference *row = references.begin(nNode); row != references.end(nNode); ++row) {
        if (row->kind == ReferenceKind::PSelected) {
            list.append(references.text(row->text));
            data.m_pSelectedRecords.append({strName, references.text(row->text)});
        }
    }
}

void NodeDependencyMaps::GenerateFeatureNoCacheList(ReferenceWalk &walk)
{
    Data &data = *d;
    data.m_featureNoCacheList.clear();
    for (const QString &strName : qAsConst(data.m_itemNames)) {
        if (data.isNoCache(strName, walk)) {
            data.m_featureNoCacheList.append(strName);
        }
    }
}

void NodeDependencyMaps::GenerateFeaturePollingList(ReferenceWalk &walk)
{
    Data &data = *d;
    data.m_featurePollingMap.clear();
    const QSet<QString> noCache(data.m_featureNoCacheList.cbegin(),
                                data.m_featureNoCacheList.cend());
    for (const QString &strName : qAsConst(data.m_itemNames)) {
        qint64 nPeriod = 0;
        if (!data.isPolling(strName, nPeriod, walk)) {
            nPeriod = noCache.contains(strName) ? NO_CACHE_PERIOD_MS : 0;
        }
        if (nPeriod < 1) {
            continue;
        }
        // One grid, so that few wake-ups serve all features.
        // In integers: a period near the end of the range must not run over it.
        const qint64 nRest = nPeriod % POLLING_GRID_MS;
        const qint64 nSteps = nPeriod / POLLING_GRID_MS + (2 * nRest >= POLLING_GRID_MS ? 1 : 0);
        data.m_featurePollingMap[std::max<qint64>(1, nSteps) * POLLING_GRID_MS].append(strName);
    }
}

bool NodeDependencyMaps::Data::isNoCache(const QString &strName, ReferenceWalk &walk) const
{
    static const QString noCache = QStringLiteral("NoCache");
    walk.restart();
    walk.enter(m_references.nodeOf(strName));
    while (const NodeReference *row = walk.next()) {
        if (row->kind == ReferenceKind::PValue || row->kind == ReferenceKind::PVariable) {
            walk.enter(m_references.nodeOf(row->text));
        } else if (row->kind == ReferenceKind::Cachable
                   && m_references.text(row->text) == noCache) {
            return true;
        }
    }
    return false;
}

bool NodeDependencyMaps::Data::isPolling(const QString &strName, qint64 &nPeriod,
                                         ReferenceWalk &walk) const
{
    walk.restart();
    walk.enter(m_references.nodeOf(strName));
    while (const NodeReference *row = walk.next()) {
        if (row->kind == ReferenceKind::PValue || row->kind == ReferenceKind::PVariable) {
            walk.enter(m_references.nodeOf(row->text));
        } else if (row->kind == ReferenceKind::PollingTime
                   && !m_references.text(row->text).isEmpty()) {
            bool bConverts = false;
            const qint64 nFound = m_references.text(row->text).toLongLong(&bConverts);
            if (bConverts) {
                nPeriod = nFound;
                return true;
            }
            walk.leave();
        }
    }
    return false;
}

void NodeDependencyMaps::generateIndex()
{
    Data &data = *d;
    const auto addKey = [](int nKey, const QStringList &texts,
                           QHash<QString, QVector<int>> &index) {
        for (const QString &strText : texts) {
            QVector<int> &keys = index[strText];
            if (keys.isEmpty() || keys.last() != nKey) {
                keys.append(nKey);
            }
        }
    };
    for (auto row = data.m_featureInvalidatorMap.cbegin();
         row != data.m_featureInvalidatorMap.cend(); ++row) {
        const int nKey = data.m_keys.size();
        data.m_keys.append(row.key());
        data.m_keyNumbers.insert(row.key(), nKey);
        data.m_partners.append(data.m_featurePairMap.value(row.key()));
        addKey(nKey, row.value(), data.m_keysInvalidatedBy);
        addKey(nKey, data.m_featurePVariableMap.value(row.key()), data.m_keysWithVariable);
    }
}
