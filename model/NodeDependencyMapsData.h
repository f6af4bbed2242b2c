#pragma once

#include "model/NodeDependencyMaps.h"
#include "model/NodeReferences.h"

#include <QHash>
#include <QSharedData>

/// What copies of NodeDependencyMaps share.
class NodeDependencyMaps::Data : public QSharedData
{
public:
    bool isNoCache(const QString &strName, ReferenceWalk &walk) const;
    bool isPolling(const QString &strName, qint64 &nPeriod, ReferenceWalk &walk) const;

    NodeReferences m_references;
    QStringList m_itemNames; ///< in key order
    QMap<QString, QStringList> m_featureInvalidatorMap;
    QMap<QString, QStringList> m_featurePVariableMap; ///< the same keys as m_featureInvalidatorMap
    QMap<QString, QString> m_featurePValueMap;
    QMap<QString, QString> m_featurePairMap;
    QMap<QString, QStringList> m_featurePSelectedMap;
    QVector<QPair<QString, QString>> m_pSelectedRecords;
    QStringList m_featuresLockedList;
    QStringList m_featureNoCacheList;
    PollingMap m_featurePollingMap;

    // Beside the maps, so that a look-up touches only what it answers. Keys of m_featureInvalidatorMap are numbered
    // in their order.
    QVector<QString> m_keys;
    QHash<QString, int> m_keyNumbers;
    QVector<QString> m_partners; ///< by key; null without one
    QHash<QString, QVector<int>> m_keysInvalidatedBy; ///< who has this text in its list, ascending
    QHash<QString, QVector<int>> m_keysWithVariable; ///< the same for variables
};
