// Narrowing what is shown: user level, search, jump, description pane, context menu.

#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomMenu.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaFeatureToolBar.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "view/VexaFeatureTreeView.h"

#include <QAction>
#include <QCursor>
#include <QSignalBlocker>
#include <QTextEdit>

void VexaFeatureTree::OnUserLevelChanged(int)
{
    if (!m_pUserLevelCombo) {
        return;
    }
    const TreeCallScope scope(this);
    QLocalCfg::Instance()->SetUserLevel(m_pUserLevelCombo->currentData().toInt());
    ShowLoadingFeatures(true, false);
    if (scope.treeIsGoing()) {
        return;
    }
    startLevelPass();

    VexaMainFeatureWidget *main = VexaMainFeatureWidget::instance();
    QTaskManager *manager = QTaskManager::Instance();
    QList<long int> cameraIds{-1};
    for (unsigned int index = 0; manager && index < manager->GetTaskCount(); ++index) {
        if (QCameraBasicTask *task = manager->GetTaskByIndex(static_cast<int>(index))) {
            cameraIds.append(task->_GetCameraBasicTaskID());
        }
    }
    for (const long int cameraId : qAsConst(cameraIds)) {
        VexaFeatureTree *tree = cameraId == -1 || main->isFeatureTreeExist(cameraId)
            ? main->featureTree(cameraId, false)
            : nullptr;
        if (tree && tree != this) {
            tree->OnOptionsChanged();
        }
    }
}

void VexaFeatureTree::startLevelPass()
{
    if (!m_pTimerAndAllThread || !cameraTask()) {
        hideLoading();
        return;
    }
    if (m_pTimerAndAllThread->IsBusy()
        && m_pTimerAndAllThread->GetUpdateType() != FEATURES_UPDATE_POLLING) {
        // The pass under way reads the level afresh for what is still to come; its own pass follows for the rest.
        m_bLevelPassPending = true;
        return;
    }
    if (m_pTimerAndAllThread->SetUpdateInfo(FEATURES_UPDATE_ALL, QStringList(),
                                            QGetFeaturesThread::UPDATE_VISIBILITY)) {
        m_pTimerAndAllThread->start(QThread::InheritPriority);
    }
}

void VexaFeatureTree::OnFeaturesSearch(const QString &text)
{
    search(text);
}

void VexaFeatureTree::OnBtnSearch()
{
    search(m_pSearchEdit->text());
}

void VexaFeatureTree::search(const QString &text)
{
    if (!m_pTreeView || !m_pToolBar) {
        return;
    }
    const TreeCallScope scope(this);
    if (m_pTreeView->setSearchText(text)) {
        m_pToolBar->setExpanded();
        emit SigExpandTree();
    }
}

void VexaFeatureTree::OnEditSearchTextChanged(const QString &)
{
}

void VexaFeatureTree::OnReturnClicked()
{
    const TreeCallScope scope(this);
    emit SigHide();
}

void VexaFeatureTree::showDescription(VexaPropertyTreeItem *item)
{
    const bool chinese = QLocalCfg::Instance()->GetPropertyLan() == QLatin1String("CH");
    item->updateLock();
    const QString text = chinese ? item->value()->m_strToolTipCn : item->value()->m_strToolTip;
    item->updateUnlock();
    m_pDescriptionEdit->clear();
    m_pDescriptionEdit->insertHtml(text);
    m_pDescriptionEdit->moveCursor(QTextCursor::Start);
}

void VexaFeatureTree::OnChangeItem(const QModelIndex &index)
{
    auto *item =
        index.isValid() ? static_cast<VexaPropertyTreeItem *>(index.internalPointer()) : nullptr;
    if (item && item->value() && m_pDescriptionEdit && m_pTreeView) {
        showDescription(item);
    }
}

void VexaFeatureTree::JumpToFeature(QString &name)
{
    VexaPropertyTreeItem *item = propertyItemByName(name);
    if (!item || !m_pDescriptionEdit || !m_pTreeView) {
        return;
    }
    showDescription(item);
    m_pTreeView->scrollToFeature(name);
}

void VexaFeatureTree::OnTreeFeaturesCustomContextMenuRequested(const QPoint &pos)
{
    if (!m_pTreeView || !m_pContextMenu || !m_pActionFavoriteAdd || !m_pActionFavoriteRemove
        || !m_pActionFavoriteRemoveAll) {
        return;
    }
    auto *item = static_cast<VexaPropertyTreeItem *>(m_pTreeView->indexAt(pos).internalPointer());
    if (!item || !item->value()) {
        return;
    }
    static const struct
    {
        ITEM_TYEP type;
        bool add;
        bool addEnabled;
        bool remove;
        bool removeAll;
        bool keepsItem;
    } rows[] = {
        {ITEM_FAVORITE, false, true, true, false, true},
        {ITEM_FAVORITES_CATEGORY, false, true, false, true, false},
        {ITEM_FEATURE, true, true, false, false, true},
        {ITEM_CATEGORY, true, false, false, false, false},
    };
    for (QAction *action :
         {m_pActionFavoriteAdd, m_pActionFavoriteRemove, m_pActionFavoriteRemoveAll}) {
        action->setVisible(false);
    }
    for (const auto &row : rows) {
        if (row.type != item->itemType()) {
            continue;
        }
        m_pActionFavoriteAdd->setVisible(row.add);
        m_pActionFavoriteAdd->setEnabled(row.addEnabled);
        m_pActionFavoriteRemove->setVisible(row.remove);
        m_pActionFavoriteRemoveAll->setVisible(row.removeAll);
        if (row.keepsItem) {
            m_pContextItem = item;
        }
    }
    m_pContextMenu->popup(QCursor::pos());
}

void VexaFeatureTree::OnActionFavoriteAdd()
{
}
void VexaFeatureTree::OnActionFavoriteRemove()
{
}
void VexaFeatureTree::OnActionFavoriteRemoveAll()
{
}
