// Pages over a feature tree: laying them, and what a host sets in their rows.

#include "editors/VexaStringFormatRules.h"
#include "model/CustomItemValues.h"
#include "model/CustomNodeNames.h"
#include "model/IVexaFeatureWidget.h"
#include "model/ItemLocks.h"
#include "model/StepPageBuilder.h"
#include "model/StepPageRows.h"
#include "model/StepPages.h"
#include "tree/VexaFeatureTree.h"
#include "view/VexaFeatureTreeView.h"

#include <iterator>

bool IVexaFeatureWidget::isFollowed(VexaPropertyTreeItem *pFeature) const
{
    return m_pRows->isFollowed(pFeature);
}

void IVexaFeatureWidget::createPageItems(VexaPropertyTreeItem *parentItem,
                                         const QDomElement &pageElement, VexaFeatureTree *pTree)
{
    if (!parentItem || !pTree || !m_pTreeView) {
        return;
    }
    m_pRows->setEditable(m_lCameraID, pTree->isCanEdit());
    StepPageBuilder({*pTree, m_lCameraID, m_nPageIndex, m_pTreeView, *m_pRows,
                     m_showInAllItems[int(m_lCameraID)], m_platformKeys, m_platformHints})
        .lay(parentItem, pageElement);
}

VexaPropertyTreeItem *IVexaFeatureWidget::pageItem(VexaPropertyTreeItem *pBranch,
                                                   const QString &strName) const
{
    return StepPages::findRow(pBranch, strName);
}

template<typename Value, typename Change>
void IVexaFeatureWidget::changeRow(VexaPropertyTreeItem *pRow, const Change &change)
{
    auto *const pValue = pRow ? dynamic_cast<Value *>(pRow->value()) : nullptr;
    if (pValue) {
        {
            const ItemLock lock(pRow);
            change(*pValue);
        }
        pRow->notifyViewUpdate(m_lCameraID, -1, false, false);
    }
}

void IVexaFeatureWidget::setRowCamera(VexaPropertyTreeItem *pRow, long lCameraID)
{
    const auto set = [lCameraID](auto &value) { value.m_nCameraID = int(lCameraID); };
    changeRow<CTreeCustomLightingSelectorItemValue>(pRow, set);
    changeRow<CTreeHorSpinBoxItemValue>(pRow, set);
    changeRow<CTreeFormatStringTextItemValue>(pRow, set);
    changeRow<CTreeScreenSelectItemValue>(pRow, set);
}

void IVexaFeatureWidget::setLightingItems(VexaPropertyTreeItem *pRow,
                                          const QList<VexaPropertyTreeItem *> &sharedSettings,
                                          VexaPropertyTreeItem *pAllOff,
                                          VexaPropertyTreeItem *pAllOn)
{
    changeRow<CTreeCustomLightingSelectorItemValue>(
        pRow, [&](CTreeCustomLightingSelectorItemValue &value) {
            for (int nSetting = 0; nSetting < int(std::size(value.m_settingItems)); ++nSetting) {
                value.m_settingItems[nSetting] = sharedSettings.value(nSetting, nullptr);
            }
            value.m_pAllOffItem = pAllOff;
            value.m_pAllOnItem = pAllOn;
        });
}

QString IVexaFeatureWidget::formatObjection(const QString &strFormatNode, const QString &strText)
{
    using namespace VexaStringFormatRules;
    if (customNodeOf(strFormatNode).isEmpty()) {
        return QString();
    }
    return warning(hasIdeographs(strText) || hasEmptyLevel(strFormatNode, strText)
                       ? REFUSED_CHARACTERS
                       : refusal(strFormatNode, strText));
}

void IVexaFeatureWidget::setSpinItems(VexaPropertyTreeItem *pRow, VexaPropertyTreeItem *pMinus,
                                      VexaPropertyTreeItem *pPlus, VexaPropertyTreeItem *pInteger)
{
    changeRow<CTreeHorSpinBoxItemValue>(pRow, [&](CTreeHorSpinBoxItemValue &value) {
        value.m_pMinusItem = pMinus;
        value.m_pPlusItem = pPlus;
        value.m_pIntegerItem = pInteger;
    });
    if (pRow && pInteger) {
        // Its refill looks at the integer itself.
        m_pRows->follow(m_lCameraID, pInteger, pRow, StepPageRows::FOLLOW_VALUE, m_pTreeView);
    }
}

void IVexaFeatureWidget::setSpinStep(VexaPropertyTreeItem *pRow, int nStep, bool bLocked)
{
    changeRow<CTreeHorSpinBoxItemValue>(pRow, [=](CTreeHorSpinBoxItemValue &value) {
        value.m_nStep = nStep;
        value.m_nValue = bLocked ? 1 : 0;
    });
}
