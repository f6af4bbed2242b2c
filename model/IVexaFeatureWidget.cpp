#include "model/IVexaFeatureWidget.h"

#include "model/CTreeItemValue.h"
#include "model/StepPageRows.h"
#include "model/StepPages.h"
#include "model/VexaPropertyTreeItem.h"
#include "view/VexaFeatureTreeView.h"

#include <QEvent>
#include <QTimerEvent>

namespace {

constexpr int TIMER_PERIOD_MS = 200;
constexpr long NO_CAMERA = -1;

bool changesWithLanguage(const VexaPropertyTreeItem &item)
{
    return item.tagName() == QLatin1String("Command")
        || item.tagName() == QLatin1String("Enumeration");
}

} // namespace

IVexaFeatureWidget::IVexaFeatureWidget(int nPageIndex, QWidget *parent)
    : CustomWidget(parent)
    , m_nPageIndex(nPageIndex)
    , m_pTreeView(new VexaFeatureTreeView(nPageIndex, this))
    , m_pRows(std::make_unique<StepPageRows>())
{
    if (nPageIndex != PARENT_FEATURE_TREE) {
        StepPages::enter(this);
    }
}

IVexaFeatureWidget::~IVexaFeatureWidget()
{
    StepPages::leave(this);
    const QList<int> cameras = m_rootItems.keys();
    for (const int camera : cameras) {
        IVexaFeatureWidget::removeCameraID(camera);
    }
}

bool IVexaFeatureWidget::afterSetFeatureValue(const QString &)
{
    return true;
}

void IVexaFeatureWidget::itemValueChanged(VexaPropertyTreeItem *pItem, bool)
{
    m_pRows->bringUp(pItem, StepPageRows::FOLLOW_VALUE);
}
void IVexaFeatureWidget::itemVisibleStateChanged(VexaPropertyTreeItem *pItem)
{
    m_pRows->bringUp(pItem, StepPageRows::FOLLOW_VISIBLE);
}
void IVexaFeatureWidget::itemExpandedChanged(VexaPropertyTreeItem *, bool)
{
}
void IVexaFeatureWidget::itemSpecialChanged(VexaPropertyTreeItem *, int)
{
}
void IVexaFeatureWidget::itemReadOnlyChanged(VexaPropertyTreeItem *pItem, bool)
{
    m_pRows->bringUp(pItem, StepPageRows::FOLLOW_READ_ONLY);
}
void IVexaFeatureWidget::afterInitialized(long)
{
}
void IVexaFeatureWidget::preparePage(int)
{
}
void IVexaFeatureWidget::cameraWithoutTree(long)
{
}

VexaPropertyTreeItem *IVexaFeatureWidget::createPageRoot()
{
    return nullptr;
}

bool IVexaFeatureWidget::updateTimerElapsed()
{
    return true;
}

bool IVexaFeatureWidget::isInitialized(long lCameraID)
{
    return m_rootItems.contains(static_cast<int>(lCameraID));
}

void IVexaFeatureWidget::setCameraID(long lCameraID)
{
    if (lCameraID == m_lCameraID || !m_pTreeView) {
        return;
    }
    m_updateTimer.stop();
    m_lCameraID = lCameraID;
    const int nCamera = static_cast<int>(lCameraID);
    const bool bInitialized = isInitialized(lCameraID);
    if (!bInitialized && lCameraID != NO_CAMERA) {
        m_pTreeView->setForbidUpdate(true);
        m_showBasicOnly.insert(nCamera, false);
        VexaPropertyTreeItem *pNewRoot = createPageRoot();
        m_pTreeView->setForbidUpdate(false);
        if (pNewRoot) {
            m_rootItems.insert(nCamera, pNewRoot);
        } else {
            // Rows may have been laid before there turned out to be no page.
            m_pRows->forget(lCameraID, m_pTreeView);
            m_showInAllItems.remove(nCamera);
        }
    }
    VexaPropertyTreeItem *pRoot = m_rootItems.value(nCamera, nullptr);
    if (bInitialized) {
        afterInitialized(lCameraID);
    } else {
        cameraWithoutTree(lCameraID);
    }
    retranslatePages();
    if (m_nPageIndex != PARENT_FEATURE_TREE) {
        m_pTreeView->setDelegateEnable(m_pRows->isEditable(lCameraID));
    }
    m_pTreeView->setCameraAndRoot(pRoot ? lCameraID : NO_CAMERA, pRoot);
    if (!pRoot) {
        m_lCameraID = NO_CAMERA;
        return;
    }
    // What was told while the pages were laid, or out of sight, has not come in.
    m_pRows->bringAllUp(lCameraID);
    m_pTreeView->openEditors(pRoot);
    afterCameraChanged(pRoot);
    m_updateTimer.start(TIMER_PERIOD_MS, this);
}

void IVexaFeatureWidget::removeCameraID(long lCameraID)
{
    const int nCamera = static_cast<int>(lCameraID);
    VexaPropertyTreeItem *pRoot = m_rootItems.take(nCamera);
    // First of all nothing more comes in; the view then drops what waits for it.
    m_pRows->forget(lCameraID, m_pTreeView);
    if (lCameraID == m_lCameraID) {
        m_lCameraID = NO_CAMERA;
        m_updateTimer.stop();
        if (m_pTreeView) {
            m_pTreeView->setCameraAndRoot(NO_CAMERA, nullptr);
        }
    }
    m_platformKeys.remove(nCamera);
    m_platformHints.remove(nCamera);
    m_showBasicOnly.remove(nCamera);
    m_showInAllItems.remove(nCamera);
    if (pRoot) {
        detachFeatureItems(pRoot);
        delete pRoot;
    }
}

void IVexaFeatureWidget::detachFeatureItems(VexaPropertyTreeItem *pItem)
{
    for (int nRow = pItem->childCount() - 1; nRow >= 0; --nRow) {
        VexaPropertyTreeItem *pChild = pItem->child(nRow);
        if (!pChild) {
            continue;
        }
        if (pChild->isFeatureTreeItem()) {
            // The feature tree owns it and goes on showing it.
            pChild->setParent(nullptr, m_nPageIndex);
            pChild->removeView(m_pTreeView);
        } else {
            detachFeatureItems(pChild);
        }
    }
}

void IVexaFeatureWidget::setExpandAll(bool bExpand)
{
    if (!m_pTreeView) {
        return;
    }
    if (bExpand) {
        m_pTreeView->expandAllRows();
    } else {
        m_pTreeView->collapseAll();
    }
}

void IVexaFeatureWidget::retranslatePages()
{
    VexaPropertyTreeItem *pRoot = m_rootItems.value(static_cast<int>(m_lCameraID), nullptr);
    for (int nPage = 0; nPage < m_nPageCount; ++nPage) {
        m_stepPageNames.clear();
        preparePage(nPage);
        if (pRoot) {
            retranslateItem(pRoot, nPage);
        }
    }
}

void IVexaFeatureWidget::retranslateItem(VexaPropertyTreeItem *pItem, int nPage)
{
    if (!pItem) {
        return;
    }
    for (int nRow = 0; nRow < pItem->childCount(); ++nRow) {
        retranslateItem(pItem->child(nRow), nPage);
    }
    if (!pItem->value()) {
        return;
    }
    const auto title = m_stepPageNames.constFind(pItem->value()->m_strNodeName);
    if (title != m_stepPageNames.cend()) {
        pItem->updateLock();
        pItem->value()->m_stepPageNames.insert(nPage, *title);
        pItem->updateUnlock();
    }
    if (changesWithLanguage(*pItem)) {
        pItem->notifyViewUpdate(m_lCameraID, -1, false, false);
    }
}

void IVexaFeatureWidget::afterCameraChanged(VexaPropertyTreeItem *pItem)
{
    if (!m_pTreeView || !pItem) {
        return;
    }
    m_pTreeView->openEditors(pItem);
    if (VexaPropertyTreeItem *pFirst = pItem->child(0)) {
        m_pTreeView->setExpanded(m_pTreeView->indexOfItem(pFirst, 0), true);
    }
}

bool IVexaFeatureWidget::isHiddenByBasic(long lCameraID, VexaPropertyTreeItem *pItem) const
{
    const int nCamera = static_cast<int>(lCameraID);
    if (!m_showBasicOnly.value(nCamera, false)) {
        return false;
    }
    const QList<VexaPropertyTreeItem *> hidden = m_showInAllItems.value(nCamera);
    for (VexaPropertyTreeItem *pBranch = pItem; pBranch; pBranch = pBranch->parent(m_nPageIndex)) {
        if (hidden.contains(pBranch)) {
            return true;
        }
    }
    return false;
}

void IVexaFeatureWidget::toggleShowBasic(long lCameraID)
{
    bool &bBasicOnly = m_showBasicOnly[static_cast<int>(lCameraID)];
    bBasicOnly = !bBasicOnly;
    VexaPropertyTreeItem *pRoot = m_rootItems.value(static_cast<int>(lCameraID), nullptr);
    if (pRoot && m_pTreeView) {
        m_pTreeView->refreshRows(pRoot, true);
    }
}

VexaFeatureTreeView *IVexaFeatureWidget::treeView() const
{
    return m_pTreeView;
}

void IVexaFeatureWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && m_nPageIndex != PARENT_FEATURE_TREE) {
        retranslatePages();
    }
    CustomWidget::changeEvent(event);
}

void IVexaFeatureWidget::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_updateTimer.timerId()) {
        CustomWidget::timerEvent(event);
    } else if (updateTimerElapsed()) {
        m_updateTimer.stop();
    }
}
