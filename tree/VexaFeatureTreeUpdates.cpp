// Asking the workers for updates, and what follows when they end.

#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomLoadingDialog.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "model/NodeDependencyMaps.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteMessages.h"
#include "view/VexaFeatureTreeView.h"

#include <QDebug>
#include <QTimer>
#include <QtConcurrent>

#include <algorithm>

namespace {

constexpr int INVALIDATE_DELAY_MS = 200;
constexpr int REFRESH_DELAY_MS = 10;
constexpr int FIRST_UPDATE_LOADING_KEY = 0;

} // namespace

void VexaFeatureTree::UpdateFeatures(int type, const QStringList &nodes, int status)
{
    qInfo().noquote() << QStringLiteral("UpdateFeatures type %1 oStatuss %2").arg(type).arg(status);
    QCameraTask *task = cameraTask();
    if (!task) {
        return;
    }
    if (type == FEATURES_UPDATE_ALL && dropsCachesFirst()) {
        qInfo("VexaFeatureTree::UpdateFeatures ClearGenIcamBuffers");
        task->ClearGenIcamBuffers();
    }
    if (!haveAllWorkers()) {
        return;
    }
    switch (type) {
    case FEATURES_UPDATE_ALL:
        updateAll(status);
        break;
    case FEATURES_UPDATE_INVALIDATOR:
        updateDependants(nodes);
        break;
    case FEATURES_UPDATE_TLPARAMSLOCKED:
        updateLocked();
        break;
    case FEATURES_UPDATE_POLLING:
        updatePolled(status);
        break;
    default:
        break;
    }
}

bool VexaFeatureTree::dropsCachesFirst() const
{
    // A tree that cannot be edited, or a device whose serial number is open more than once: somebody else writes too.
    const bool sharedSerial = m_nDeviceType == DEVICE_TYPE_CL && QTaskManager::Instance()
        && QTaskManager::Instance()->GetCameraCount(m_strSerialNumber) >= 2;
    return !m_bCanEdit || sharedSerial;
}

void VexaFeatureTree::updateAll(int status)
{
    qInfo("m_pTimerAndAllThread begin start------------------------------------");
    if (!m_pTimerAndAllThread->SetUpdateInfo(FEATURES_UPDATE_ALL, QStringList(), status)) {
        return;
    }
    qInfo("m_pTimerAndAllThread starting!%ld", m_lCameraID);
    m_pTimerAndAllThread->start(QThread::InheritPriority);
    qInfo("m_pTimerAndAllThread start------------------------------------");
}

void VexaFeatureTree::updateDependants(const QStringList &nodes)
{
    if (!m_pInvalidateUpdateThread->IsBusy()) {
        qInfo("m_pInvalidateUpdateThread begin start------------------------------------");
        if (!m_pInvalidateUpdateThread->SetUpdateInfo(FEATURES_UPDATE_INVALIDATOR, QStringList(),
                                                      QGetFeaturesThread::UPDATE_EVERYTHING)) {
            return;
        }
        m_pInvalidateUpdateThread->start(QThread::InheritPriority);
        qInfo("m_pInvalidateUpdateThread start------------------------------------");
    }
    m_futures.erase(std::remove_if(m_futures.begin(), m_futures.end(),
                                   [](const QFuture<void> &future) { return future.isFinished(); }),
                    m_futures.end());
    // StopThread waits for the job before the maps or the worker go.
    m_futures.append(
        QtConcurrent::run([maps = m_pMaps.get(), worker = m_pInvalidateUpdateThread, nodes] {
            QStringList names;
            for (const QString &node : nodes) {
                names += maps->GetFeatureInvalidatorList(node);
            }
            names.removeDuplicates();
            worker->UpdateThreadInfo(names);
            worker->SetRepeatUpdate(true);
        }));
}

void VexaFeatureTree::updateLocked()
{
    if (m_pLockAndRelativeThread->IsBusy()) {
        m_pLockAndRelativeThread->SetRepeatUpdate(true);
        return;
    }
    qInfo("m_pLockAndRelativeThread begin start------------------------------------");
    if (!m_pLockAndRelativeThread->SetUpdateInfo(FEATURES_UPDATE_TLPARAMSLOCKED,
                                                 m_pMaps->lockedList(),
                                                 QGetFeaturesThread::UPDATE_EVERYTHING)) {
        return;
    }
    m_pLockAndRelativeThread->start(QThread::InheritPriority);
    qInfo("m_pLockAndRelativeThread start------------------------------------");
}

void VexaFeatureTree::updatePolled(int status)
{
    if (!m_pPollingThread->SetUpdateInfo(FEATURES_UPDATE_POLLING, QStringList(), status)) {
        return;
    }
    m_pPollingThread->start(QThread::InheritPriority);
    qInfo("m_pPollingThread start------------------------------------");
}

void VexaFeatureTree::OnAddValueChangedNodes(const QList<QString> &names)
{
    if (!m_pInvalidateTimer) {
        return;
    }
    m_pendingInvalidations += names;
    m_pendingInvalidations.removeDuplicates();
    startInvalidateTimer();
}

void VexaFeatureTree::appendPending(const QString &name)
{
    // Writes that fail for hours must not make the list longer.
    if (!name.isEmpty() && !m_pendingInvalidations.contains(name)) {
        m_pendingInvalidations.append(name);
    }
}

bool VexaFeatureTree::startInvalidateTimer()
{
    if (!m_pInvalidateTimer) {
        return false;
    }
    m_pInvalidateTimer->start(INVALIDATE_DELAY_MS);
    return true;
}

void VexaFeatureTree::OnTimeInvalidaterFeaturesUpdate()
{
    m_pInvalidateTimer->stop();
    if (m_pendingInvalidations.isEmpty()) {
        return;
    }
    QStringList names;
    names.swap(m_pendingInvalidations);
    UpdateFeatures(FEATURES_UPDATE_INVALIDATOR, names, QGetFeaturesThread::UPDATE_EVERYTHING);
    if (!cameraTask()) {
        // Lost since the write: no round will end.
        m_bLoading = false;
        hideLoading();
    }
}

void VexaFeatureTree::RefreshFeatures()
{
    UpdateFeatures(FEATURES_UPDATE_ALL, QStringList(), QGetFeaturesThread::UPDATE_REFRESH);
    if (m_pSearchEdit) {
        m_pSearchEdit->setPlaceholderText(WriteMessages::translated("lang_qfeaturetree_search"));
    }
}

void VexaFeatureTree::OnBtnRefresh()
{
    const TreeCallScope scope(this);
    if (!m_pRefreshTimer) {
        return;
    }
    ShowLoadingFeatures(true, false);
    if (scope.treeIsGoing()) {
        return;
    }
    RefreshFeatures();
    if (!cameraTask()) {
        hideLoading();
    }
    m_pRefreshTimer->start(REFRESH_DELAY_MS);
}

void VexaFeatureTree::OnTimerRefreshFinished()
{
    m_pRefreshTimer->stop();
}

void VexaFeatureTree::updateFeature(VexaPropertyTreeItem *item, int status)
{
    if (item && m_pTimerAndAllThread) {
        m_pTimerAndAllThread->UpdateFeature(item, QGetFeaturesThread::UpdateStatusFlags(status));
    }
}

void VexaFeatureTree::getFeatureValueFromCamera(VexaPropertyTreeItem *item)
{
    updateFeature(item, QGetFeaturesThread::UPDATE_VALUE);
}

void VexaFeatureTree::OnGetThreadStart()
{
    qInfo("OnGetThreadStart");
}

void VexaFeatureTree::OnGetThreadEnd()
{
    const TreeCallScope scope(this);
    qInfo("OnGetThreadEnd");
    auto *worker = qobject_cast<QGetFeaturesThread *>(sender());
    if (!m_pTreeView || !worker) {
        return;
    }
    const bool isOwnEnd = worker->TakeOwnEnd();
    m_pTreeView->viewport()->update();
    const bool all = worker == m_pTimerAndAllThread;
    if (all && isOwnEnd && m_bFirstUpdateOfAll) {
        qInfo("OnGetThreadEnd and first update end %ld", m_lCameraID);
        m_bFirstUpdate = false;
        m_bFirstUpdateOfAll = false;
        // Whoever hears the first may close the camera.
        const long int cameraId = m_lCameraID;
        emit QVexaEventBus::Instance()->SigVexaEventFirstUpdateFeatureTreeEnd(cameraId);
        emit SigFirstEndUpdateFeature(cameraId);
        if (scope.treeIsGoing()) {
            return;
        }
    } else if (!all && m_bFirstUpdate) {
        CustomLoadingDialog::hideLoading(FIRST_UPDATE_LOADING_KEY);
        m_bFirstUpdate = false;
    }
    if (m_bLoading) {
        m_bLoading = false;
        hideLoading();
    }
    if (m_nDeviceType == DEVICE_TYPE_CL) {
        hideLoading();
    }
    if (all && isOwnEnd && m_bLevelPassPending) {
        m_bLevelPassPending = false;
        startLevelPass();
    }
}

void VexaFeatureTree::OnUpdateRoundStart()
{
}

void VexaFeatureTree::OnUpdateRoundEnd()
{
    if (!m_pTreeView) {
        return;
    }
    m_pTreeView->viewport()->update();
    m_bLoading = false;
    // Both workers of these rounds end whatever dialog is up.
    hideLoading();
}
