#pragma once

#include <QDomElement>
#include <QMap>
#include <QPair>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <memory>

class NodeReferences;
class ReferenceWalk;

/// Which nodes of a device description depend on which (GenICam pValue, pMin, pMax, pInc, pIsLocked, pIsImplemented,
/// pIsAvailable, pVariable, pInvalidator, pSelected), worked out once an opening, so that after a write the tree can
/// tell at once what must be read again. generate() and clear() belong to the GUI thread. A copy is cheap and shares
/// the stop request; the const operations of one copy may run on any threads together.
class NodeDependencyMaps
{
public:
    using ElementMap = QMap<QString, QDomElement>;
    /// Polling period in milliseconds to item names.
    using PollingMap = QMap<qint64, QStringList>;

    NodeDependencyMaps();
    ~NodeDependencyMaps();
    NodeDependencyMaps(const NodeDependencyMaps &other);
    NodeDependencyMaps &operator=(const NodeDependencyMaps &other);

    /// Works all maps out anew for these items. The elements are not kept.
    void generate(const QDomElement &documentElement, const ElementMap &elements,
                  const QStringList &itemNames);
    /// Empties all maps.
    void clear();
    /// While set, GetFeatureInvalidatorList gives up at once, also in copies. Any thread.
    void setStopRequested(bool bStop);

    /// Features to read again after `strName` was written; empty while a stop is requested.
    QStringList GetFeatureInvalidatorList(const QString &strName) const;
    /// Features that share a pVariable with this one, itself included, in key order.
    QStringList GetFeaturesHaveSamePVariable(const QString &strName) const;
    /// Every node that the feature reaches as pVariable; empty for an unknown name.
    QStringList GetFeaturePVariableList(const QString &strName) const;
    /// The pSelected texts of a selector; false and `out` untouched when it has none.
    bool GetFeaturePSelectedList(const QString &strName, QList<QString> &out) const;
    /// Items whose direct pValue this is, in key order.
    QStringList GetFeaturesNameByPValue(const QString &strPValue) const;
    /// The feature that drives the same register the other way round; false when there is none.
    bool GetFeatureInPair(const QString &strName, QString &out) const;
    /// Whether the list holds the name or the node that it mirrors by its pValue.
    bool IsFeatureInQList(const QString &strName, const QStringList &list) const;
    /// Whether the node or anything it reads through pValue or pVariable is Cachable "NoCache".
    bool IsNoCacheFeature(const QString &strName) const;
    /// Period in milliseconds of the first PollingTime on the node's pValue and pVariable chain.
    bool IsPollingFeature(const QString &strName, qint64 &nPeriod) const;

    /// Text of the first child with that tag; false when there is none.
    static bool GetPValueText(const QDomElement *pElement, QString &out);
    static bool GetPIsLockedText(const QDomElement *pElement, QString &out);
    /// The first element below `parent` with this Name.
    static bool GetFeatureNode(const QString &strName, const QDomElement &parent, QDomElement &out);
    /// Text of ImposedAccessMode, else of AccessMode.
    static QString GetValueAccessMode(const QDomElement &element);

    /// Items with a pIsLocked child, in key order.
    const QStringList &lockedList() const;
    /// Items that IsNoCacheFeature, in key order.
    const QStringList &noCacheList() const;
    /// On a grid of 50 ms, never 0 or below: such a period would not fire.
    const PollingMap &pollingMap() const;
    /// Feature to every node that invalidates it; duplicates stay.
    const QMap<QString, QStringList> &invalidatorMap() const;
    /// (feature, selected node) for each pSelected, in walking order.
    const QVector<QPair<QString, QString>> &pSelectedRecords() const;

private:
    class Data;
    class Answer;

    void ResetFeaturesInvalidatorMap(ReferenceWalk &walk);
    void GenerateFeaturesInvalidatorMap(ReferenceWalk &walk);
    void InsertFeatureInvalidator(int nName, int nNode, ReferenceWalk &walk);
    void GenerateFeaturePValueList();
    void GenerateFeaturePairList();
    void GenerateFeaturesTLParamsLocked();
    void GeneratePSelectedList();
    void GenerateFeaturePSelectedList(const QString &strName, QStringList &list);
    void GenerateFeatureNoCacheList(ReferenceWalk &walk);
    void GenerateFeaturePollingList(ReferenceWalk &walk);
    void generateIndex();
    bool isStopRequested() const;

    QSharedDataPointer<Data> d;
    std::shared_ptr<std::atomic<bool>> m_bStopRequested; ///< one for all copies
};
