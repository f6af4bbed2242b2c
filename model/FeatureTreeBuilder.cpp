#include "model/FeatureTreeBuilder.h"

#include "model/CTreeItemValue.h"
#include "model/ElementWalk.h"
#include "model/VexaPropertyTreeItem.h"

#include <QDebug>

namespace {

constexpr int MAX_CATEGORY_DEPTH = 128;
constexpr int MAX_FEATURES = 200000; ///< pFeature links followed
const QLatin1String TAG_CATEGORY("Category");

/// These two always stand at the top.
bool isTopLevelNode(const QString &strName)
{
    return strName == QLatin1String("FocusOptSelect") || strName == QLatin1String("SamOptSelect");
}

QSet<QString> makeLeftOutNodes()
{
    QSet<QString> nodes{QStringLiteral("SingleTrigger")};
    for (const char *stem : {"SymbolContrast", "MinimumReflectance", "MinimumEdgeContrast",
                             "Modulation", "Decodability", "Defects", "TDCRSymbolContrast",
                             "TDCRModulation", "TDCRAxialNonuniformity", "TDCRGridNonuniformity",
                             "TDCRUnusedErrorCorrection", "TDCRPrintGrowth"}) {
        for (const char *grade : {"", "A", "B", "C", "D"}) {
            nodes.insert(QLatin1String(stem) + QLatin1String(grade));
        }
    }
    return nodes;
}

} // namespace

FeatureTreeBuilder::FeatureTreeBuilder() = default;
FeatureTreeBuilder::~FeatureTreeBuilder() = default;

void FeatureTreeBuilder::reset()
{
    if (m_pRootItem) {
        m_pRootItem->clear();
    }
    m_domElementMap.clear();
    m_allTreeItems.clear();
    m_favoriteItems.clear();
    m_featureParentMap.clear();
    m_allFeatureNames.clear();
    m_domDocument.clear();
}

void FeatureTreeBuilder::deleteRoot()
{
    reset();
    m_pRootItem.reset();
}

void FeatureTreeBuilder::GenerateDomElementMap(const QDomElement &element)
{
    if (element.isNull()) {
        return;
    }
    m_domDocument = element.ownerDocument();
    bool bEntry = false;
    for (QDomElement node = ElementWalk::next(element, element); !node.isNull();
         node = ElementWalk::next(node, element, !bEntry)) {
        bEntry = node.tagName() == QLatin1String("EnumEntry");
        const QString strName = bEntry ? QString() : ElementWalk::name(node);
        if (!strName.isEmpty()) {
            m_domElementMap.insert(strName, node);
        }
    }
}

void FeatureTreeBuilder::createItems(const QDomDocument &document, IVexaFeatureNotify *pView)
{
    if (!m_pRootItem) {
        m_pRootItem = std::make_unique<VexaPropertyTreeItem>();
    }
    m_pRootItem->clear();
    m_allTreeItems.clear();
    m_favoriteItems.clear();
    m_pRootItem->registerView(pView);
    m_pView = pView;
    m_nLinks = 0;

    const QDomNodeList categories = document.documentElement().elementsByTagName(TAG_CATEGORY);
    for (int i = 0; i < categories.size(); ++i) {
        const QDomElement category = categories.at(i).toElement();
        const QString strName = ElementWalk::name(category);
        if (!m_categories.contains(strName)) {
            m_categories.insert(strName, category);
        }
    }
    const QString strRoot = QStringLiteral("Root");
    const QDomElement root = findElement(strRoot);
    if (!root.isNull()) {
        m_path.insert(strRoot);
        creatItemRecursion(m_pRootItem.get(), root);
    }
    m_path.clear();
    m_categories.clear();
    m_pView = nullptr;
}

QDomElement FeatureTreeBuilder::findElement(const QString &strName) const
{
    return m_categories.value(strName);
}

VexaPropertyTreeItem *FeatureTreeBuilder::createItem(VexaPropertyTreeItem *pParent,
                                                     const QString &strName)
{
    auto *pItem = new VexaPropertyTreeItem(pParent, PARENT_FEATURE_TREE);
    pItem->value()->m_strDisplayName = strName;
    pItem->value()->m_strNodeName = strName;
    pItem->registerView(m_pView);
    if (VexaPropertyTreeItem *pEarlier = m_allTreeItems.value(strName, nullptr)) {
        // One feature under several categories: an update of the last row serves all.
        pItem->joinTwins(pEarlier);
    }
    m_allTreeItems.insert(strName, pItem);
    return pItem;
}

void FeatureTreeBuilder::creatItemRecursion(VexaPropertyTreeItem *pParent,
                                            const QDomElement &element)
{
    const bool bCategory = element.tagName() == TAG_CATEGORY;
    const QString strCategory = ElementWalk::name(element);
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() != QLatin1String("pFeature")) {
            continue;
        }
        if (m_nLinks > MAX_FEATURES) {
            return;
        }
        if (++m_nLinks > MAX_FEATURES) {
            qWarning("The description links more than %d features; the rest has no rows.",
                     MAX_FEATURES);
            return;
        }
        const QString strName = ElementWalk::text(child);
        m_allFeatureNames.append(strName);
        VexaPropertyTreeItem *pItemParent = pParent;
        if (bCategory) {
            const bool bTop = isTopLevelNode(strName);
            m_featureParentMap.insert(strName, bTop ? QStringLiteral("Root") : strCategory);
            if (bTop) {
                pItemParent = m_pRootItem.get();
            }
        }
        if (!IsNeedCreateItem(strName)) {
            continue;
        }
        VexaPropertyTreeItem *pItem = createItem(pItemParent, strName);
        pItem->setItemType(ITEM_CATEGORY);
        const QDomElement category = findElement(strName);
        if (category.isNull()) {
            pItem->setItemType(ITEM_FEATURE);
            const QDomElement node = m_domElementMap.value(strName);
            if (!node.isNull()) {
                pItem->setTagName(node.tagName());
            }
        } else if (m_path.contains(strName) || m_path.size() >= MAX_CATEGORY_DEPTH) {
            qWarning().noquote()
                << QStringLiteral(
                       "Category %1 stands in a circle or too deep; its row stays empty.")
                       .arg(strName);
        } else {
            m_path.insert(strName);
            creatItemRecursion(pItem, category);
            m_path.remove(strName);
        }
    }
}

bool FeatureTreeBuilder::GetDomElementNode(const QString &strName, QDomElement &out) const
{
    const QDomElement found = m_domElementMap.value(strName);
    if (found.isNull()) {
        return false;
    }
    out = found;
    return true;
}

bool FeatureTreeBuilder::IsNeedCreateItem(const QString &strName)
{
    static const QSet<QString> leftOut = makeLeftOutNodes();
    return !leftOut.contains(strName);
}
