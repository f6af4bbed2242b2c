#pragma once

#include <QDomElement>
#include <QHash>
#include <QMap>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

/// Which nodes of a device description depend on which (GenICam pValue, pMin, pMax, pInc, pIsLocked, pIsImplemented,
/// pIsAvailable, pVariable, pInvalidator, pSelected), worked out once an opening, so that after a write the tree can
/// tell at once what must be read again. generate() and clear() belong to the GUI thread while no job looks anything
/// up; the Get and Is operations may run on any threads together.
class NodeDependencyMaps
{
public:
    using ElementMap = QMap<QString, QDomElement>;

    NodeDependencyMaps() = default;
    Q_DISABLE_COPY(NodeDependencyMaps)

    /// Works all maps out anew for these items. The elements stay in use: keep a handle of their document.
    void generate(const QDomElement &documentElement, const ElementMap &elements, const QStringList &itemNames);
    void clear();
    /// While set, GetFeatureInvalidatorList gives up at once. Any thread.
    void setStopRequested(bool stop);

    /// Features to read again after `name` was written; empty while a stop is requested.
    QStringList GetFeatureInvalidatorList(const QString &name) const;
    /// Features that share a pVariable with `name`, itself included, in key order.
    QStringList GetFeaturesHaveSamePVariable(const QString &name) const;
    QStringList GetFeaturePVariableList(const QString &name) const;
    /// The pSelected texts of a selector; false and `out` untouched when it has none.
    bool GetFeaturePSelectedList(const QString &name, QList<QString> &out) const;
    /// Items whose direct pValue this is, in key order.
    QStringList GetFeaturesNameByPValue(const QString &pValue) const;
    /// The feature that drives the same register the other way round.
    bool GetFeatureInPair(const QString &name, QString &out) const;
    /// Whether the list holds `name` or the node that it mirrors by its pValue.
    bool IsFeatureInQList(const QString &name, const QStringList &list) const;
    /// Whether the node or anything it reads through pValue or pVariable is Cachable "NoCache".
    bool IsNoCacheFeature(const QString &name) const;
    /// Period in milliseconds of the first PollingTime on the node's pValue and pVariable chain.
    bool IsPollingFeature(const QString &name, qint64 &period) const;

    /// Text of the first child with that tag; false when there is none.
    static bool GetPValueText(const QDomElement *element, QString &out);
    static bool GetPIsLockedText(const QDomElement *element, QString &out);
    /// The first element below `parent` with this Name.
    static bool GetFeatureNode(const QString &name, const QDomElement &parent, QDomElement &out);
    /// Text of ImposedAccessMode, else of AccessMode.
    static QString GetValueAccessMode(const QDomElement &element);

    /// Items with a pIsLocked child, in key order.
    const QStringList &lockedList() const { return m_featuresLockedList; }
    const QStringList &noCacheList() const { return m_featureNoCacheList; }
    /// Polling period in milliseconds, a multiple of 50, to item names.
    const QMap<long long, QStringList> &pollingMap() const { return m_featurePollingMap; }
    const QMap<QString, QStringList> &invalidatorMap() const { return m_featureInvalidatorMap; }
    /// (feature, selected node) for each pSelected, in walking order.
    const QVector<QPair<QString, QString>> &pSelectedRecords() const { return m_pSelectedRecords; }

private:
    void ResetFeaturesInvalidatorMap();
    void GenerateFeaturesInvalidatorMap(const QDomElement &element);
    void InsertFeatureInvalidator(const QDomElement &element);
    void GenerateInvalidatorListByProperty(const QString &name, QStringList &invalidators, QStringList &variables,
                                           QSet<QString> &visited) const;
    void GenerateFeaturePValueList();
    void GenerateFeaturePairList();
    void GenerateFeaturesTLParamsLocked();
    void GeneratePSelectedList();
    void GenerateFeaturePSelectedList(const QString &name, QStringList &list);
    void GenerateFeatureNoCacheList();
    void GenerateFeaturePollingList();
    void generateInvertedIndex();
    bool isNoCache(const QString &name, QSet<QString> &visited) const;
    bool isPolling(const QString &name, qint64 &period, QSet<QString> &visited) const;
    QDomElement elementOf(const QString &name) const { return m_elements.value(name); }

    QDomElement m_documentElement;
    ElementMap m_elements;
    QStringList m_itemNames; ///< in key order
    QMap<QString, QStringList> m_featureInvalidatorMap;
    QMap<QString, QStringList> m_featurePVariableMap;
    QMap<QString, QString> m_featurePValueMap;
    QMap<QString, QString> m_featurePairMap;
    QMap<QString, QStringList> m_featurePSelectedMap;
    QVector<QPair<QString, QString>> m_pSelectedRecords;
    QStringList m_featuresLockedList;
    QStringList m_featureNoCacheList;
    QMap<long long, QStringList> m_featurePollingMap;
    // Beside the maps: who has this text in its list, in key order, so that a look-up need not walk all features.
    QHash<QString, QStringList> m_invalidatedBy;
    QHash<QString, QStringList> m_usersOfVariable;
    std::atomic<bool> m_bStopRequested {false};
};
