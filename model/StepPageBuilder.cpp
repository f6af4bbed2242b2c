#include "model/StepPageBuilder.h"

#include "model/CTreeItemValue.h"
#include "model/CustomNodeNames.h"
#include "model/ItemLocks.h"
#include "model/PortableNodeNames.h"
#include "model/StepPageRows.h"
#include "tree/VexaFeatureTree.h"

#include <QDebug>
#include <QDomElement>

#include <algorithm>
#include <iterator>

namespace {

constexpr int MAX_DEPTH = 32;
const QLatin1String CUSTOM_PREFIX("Custom_");
const QLatin1String PORTABLE_PREFIX("Node_");

} // namespace

/// Features that need more than to be attached.
struct StepPageBuilder::FeatureRule
{
    QLatin1String name;
    void (StepPageBuilder::*lay)(VexaPropertyTreeItem *pParent, const Entry &entry);
};

/// Pages for one of the two kinds of tuning: devices with the command "SmartTune", or those without.
struct StepPageBuilder::CategoryRule
{
    QLatin1String name;
    bool needsTuning;
};

StepPageBuilder::StepPageBuilder(const Site &site)
    : m_site(site)
{
}

void StepPageBuilder::lay(VexaPropertyTreeItem *pParent, const QDomElement &pageElement)
{
    if (pParent) {
        layBelow(pParent, pageElement, 1);
    }
}

void StepPageBuilder::layBelow(Item *pParent, const QDomElement &pageElement, int nDepth)
{
    if (nDepth > MAX_DEPTH) {
        qWarning() << "step pages nest too deep, left out below" << pageElement.attribute("Name");
        return;
    }
    for (QDomElement element = pageElement.firstChildElement(); !element.isNull();
         element = element.nextSiblingElement()) {
        const Entry entry{element.attribute(QStringLiteral("Name")),
                          element.attribute(QStringLiteral("ShowInAll"), QStringLiteral("0"))
                              == QLatin1String("1"),
                          element.attribute(QStringLiteral("DisplayName_En")),
                          element.attribute(QStringLiteral("DisplayName_Cn"))};
        if (entry.strName.isEmpty()) {
            continue;
        }
        if (element.tagName() == QLatin1String("Category")) {
            layCategory(pParent, element, entry, nDepth);
        } else if (element.tagName() == QLatin1String("Feature")) {
            layFeature(pParent, entry);
        }
    }
}

void StepPageBuilder::layCategory(Item *pParent, const QDomElement &element, const Entry &entry,
                                  int nDepth)
{
    static const CategoryRule rules[] = {
        {QLatin1String("Custom_SmartTuneControl"), true},
        {QLatin1String("Custom_SelfAdaptParamAdjust"), false},
        {QLatin1String("Custom_AutoFocus"), false},
    };
    const bool bTuning = hasTuningCommand();
    if (std::any_of(std::begin(rules), std::end(rules), [&](const CategoryRule &rule) {
            return entry.strName == rule.name && rule.needsTuning != bTuning;
        })) {
        return;
    }
    Item *const pPage = newRow(pParent, entry.strName);
    pPage->setReadOnly(m_site.lCameraID, false);
    pPage->setItemType(ITEM_CATEGORY);
    setStepNames(pPage, entry);
    // Its rows decide whether it is shown; without any it is not.
    pPage->setVisible(false, -1, false);
    if (entry.bShowInAll) {
        m_site.showInAll.append(pPage);
    }
    layBelow(pPage, element, nDepth + 1);
}

void StepPageBuilder::layFeature(Item *pParent, const Entry &entry)
{
    static const FeatureRule rules[] = {
        {QLatin1String("LightEnable"), &StepPageBuilder::layLightEnable},
        {QLatin1String("LightingEnable"), &StepPageBuilder::layLightEnable},
        {QLatin1String("Custom_LightingSelector"), &StepPageBuilder::layLightingSelector},
        {QLatin1String("FocusStep"), &StepPageBuilder::layFocusStep},
        {QLatin1String("Custom_SelfTrigger"), &StepPageBuilder::laySelfTrigger},
        {QLatin1String("RegularExpressionRules"), &StepPageBuilder::layRegularExpression},
        {QLatin1String("ScreenHomepage"), &StepPageBuilder::layScreenHomepage},
    };
    const auto rule = std::find_if(std::begin(rules), std::end(rules), [&](const FeatureRule &row) {
        return entry.strName == row.name;
    });
    if (rule != std::end(rules)) {
        (this->*rule->lay)(pParent, entry);
    } else if (!customNodeOf(entry.strName).isEmpty()) {
        layFormat(pParent, entry);
    } else if (entry.strName.startsWith(CUSTOM_PREFIX)) {
        Item *const pRow = newRow(pParent, entry.strName);
        pRow->setReadOnly(m_site.lCameraID, false);
        setStepNames(pRow, entry);
    } else {
        attach(item(entry.strName.startsWith(PORTABLE_PREFIX) ? resolved(entry.strName)
                                                              : entry.strName),
               pParent, entry);
    }
}

StepPageBuilder::Item *StepPageBuilder::item(const QString &strName) const
{
    return m_site.tree.propertyItemByName(strName);
}

bool StepPageBuilder::hasTuningCommand() const
{
    return item(QStringLiteral("SmartTune")) != nullptr;
}

void StepPageBuilder::setStepNames(Item *pItem, const Entry &entry)
{
    const ItemLock lock(pItem);
    if (CTreeItemValue *pValue = pItem->value()) {
        pValue->m_strStepDisplayNameEn = entry.strDisplayNameEn;
        pValue->m_strStepDisplayNameCn = entry.strDisplayNameCn;
    }
}

void StepPageBuilder::attach(Item *pFeature, Item *pParent, const Entry &entry)
{
    if (!pFeature) {
        return;
    }
    if (pFeature->itemType() != ITEM_FEATURE || pFeature->childCount() > 0) {
        qWarning() << "step pages show no categories of the device:" << entry.strName;
        return;
    }
    if (Item *const pOther = pFeature->parent(m_site.nPageIndex)) {
        if (pageRootOf(pOther) != pageRootOf(pParent)) {
            qWarning() << "already on the pages of another widget with this index:"
                       << entry.strName;
            return;
        }
        qWarning() << "named twice on the step pages, the last one counts:" << entry.strName;
    }
    pFeature->setParent(pParent, m_site.nPageIndex);
    m_site.rows.watch(m_site.lCameraID, pFeature, m_site.pView);
    setStepNames(pFeature, entry);
}

StepPageBuilder::Item *StepPageBuilder::newRow(Item *pParent, const QString &strName,
                                               const QString &strTag)
{
    auto *const pRow = new Item(pParent, m_site.nPageIndex);
    pRow->setIsFeatureTreeItem(false);
    pRow->setItemType(ITEM_FEATURE);
    pRow->setTagName(strTag);
    if (CTreeItemValue *pValue = pRow->value()) {
        pValue->m_strNodeName = strName;
        pValue->m_strDisplayName = strName;
    }
    m_site.rows.watch(m_site.lCameraID, pRow, m_site.pView);
    return pRow;
}

StepPageBuilder::Item *StepPageBuilder::pageRootOf(Item *pItem) const
{
    while (Item *const pParent = pItem->parent(m_site.nPageIndex)) {
        pItem = pParent;
    }
    return pItem;
}

QString StepPageBuilder::settledPlatform(const QString &strPortableName) const
{
    const QStringList &platforms = PortableNodeNames::platformKeys();
    const QString strHint = m_site.platformHints.value(int(m_site.lCameraID));
    const QString strProbe = strHint.isEmpty() ? strPortableName : strHint;
    const auto found =
        std::find_if(platforms.cbegin(), platforms.cend(), [&](const QString &strPlatform) {
            return item(PortableNodeNames::nodeName(strPlatform, strProbe)) != nullptr;
        });
    return found == platforms.cend() ? platforms.constFirst() : *found;
}

QString StepPageBuilder::resolved(const QString &strPortableName)
{
    QString strName;
    // A device may mix the generations: what does not fit the settled platform settles it anew, once.
    for (int nTry = 0; nTry < 2 && !item(strName); ++nTry) {
        QString &strPlatform = m_site.platformKeys[int(m_site.lCameraID)];
        if (nTry > 0 || strPlatform.isEmpty()) {
            strPlatform = settledPlatform(strPortableName);
        }
        strName = PortableNodeNames::nodeName(strPlatform, strPortableName);
    }
    return strName;
}
