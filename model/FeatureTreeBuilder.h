#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>

class IVexaFeatureNotify;
class VexaPropertyTreeItem;

/// Builds the item tree of one camera from its device description (GenICam XML): the tree of its categories, with some
/// nodes left out by name. It owns the items. Descriptions come from outside, so that categories in a circle, shared
/// without end or nested too deep end with a log line. GUI thread.
class FeatureTreeBuilder
{
public:
    using ElementMap = QMap<QString, QDomElement>;
    using ItemMap = QMap<QString, VexaPropertyTreeItem *>;

    FeatureTreeBuilder();
    ~FeatureTreeBuilder();
    Q_DISABLE_COPY(FeatureTreeBuilder)

    /// Empties all maps and the root, which stays; whoever shows the items has let go of them before.
    void reset();
    /// Deletes the root with all items.
    void deleteRoot();
    /// Enters every named element below `element`; entries of enumerations are not nodes of the tree.
    void GenerateDomElementMap(const QDomElement &element);
    /// Builds the items anew from the element map; every item gets the view.
    void createItems(const QDomDocument &document, IVexaFeatureNotify *pView);
    /// False for an unknown name.
    bool GetDomElementNode(const QString &strName, QDomElement &out) const;
    /// Whether a node gets a row. Quality grades and "SingleTrigger" do not.
    static bool IsNeedCreateItem(const QString &strName);

    /// Invisible root, null before the first build.
    VexaPropertyTreeItem *rootItem() const { return m_pRootItem.get(); }
    /// Every named element by its attribute Name. Keep a handle of the document beside a copy.
    const ElementMap &elementMap() const { return m_domElementMap; }
    /// Every item by node name, categories included; of a name under two categories the later.
    const ItemMap &allTreeItems() const { return m_allTreeItems; }
    const ItemMap &favoriteItems() const { return m_favoriteItems; }
    /// Favourites by node name; whoever makes them enters and removes them. Emptied with the items.
    ItemMap &favoriteItems() { return m_favoriteItems; }
    /// Feature name to the name of its category.
    const QMap<QString, QString> &featureParentMap() const { return m_featureParentMap; }
    /// Every pFeature text in document order, also those without a row.
    const QStringList &allFeatureNames() const { return m_allFeatureNames; }

private:
    void creatItemRecursion(VexaPropertyTreeItem *pParent, const QDomElement &element);
    QDomElement findElement(const QString &strName) const;
    VexaPropertyTreeItem *createItem(VexaPropertyTreeItem *pParent, const QString &strName);

    std::unique_ptr<VexaPropertyTreeItem> m_pRootItem;
    QDomDocument m_domDocument; ///< keeps the elements whole: parents, siblings
    ElementMap m_domElementMap;
    ItemMap m_allTreeItems;
    ItemMap m_favoriteItems;
    QMap<QString, QString> m_featureParentMap;
    QStringList m_allFeatureNames;

    // Of the build under way.
    QHash<QString, QDomElement> m_categories;
    QSet<QString> m_path; ///< categories above the one in hand
    IVexaFeatureNotify *m_pView = nullptr;
    int m_nLinks = 0; ///< pFeature links followed
};
