// Narrowing what is shown: user level, search, jump, description pane.

#include "ControlKit/CustomLineEdit.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "model/CTreeItemValue.h"
#include "model/ItemLocks.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaFeatureToolBar.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "view/VexaFeatureTreeView.h"

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
    if (!m_pTimerAndAllThread->SetUpdateInfo(FEATURES_UPDATE_ALL, QStringList(),
                                             QGetFeaturesThread::UPDATE_VISIBILITY)) {
        hideLoading(); // no pass comes that would
        return;
    }
    m_pTimerAndAllThread->start(QThread::InheritPriority);
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
    QString text;
    {
        const ItemLock lock(item);
        if (const CTreeItemValue *value = item->value()) {
            text = chinese ? value->m_strToolTipCn : value->m_strToolTip;
        }
    }
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
