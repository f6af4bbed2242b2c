// How the tree comes alive with a camera, is rebuilt, closed and taken down.

#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QChannelTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "featurefile/VexaFeatureImExThread.h"
#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "model/StepPages.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaFeatureToolBar.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "view/VexaFeatureTreeView.h"

#include <QDebug>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int POLLING_INTERVAL_MS = 2000;
constexpr unsigned int ACCESS_MODE_READ_ONLY = 2;

} // namespace

bool VexaFeatureTree::isInitialized(long)
{
    const VexaPropertyTreeItem *root = rootItem();
    return root && root->childCount() > 0;
}

void VexaFeatureTree::OnCameraOpen(unsigned int accessMode)
{
    const TreeCallScope scope(this);
    if (isInitialized(m_lCameraID) || !m_pTreeView) {
        return;
    }
    QCameraTask *task = cameraTask();
    if (!task) {
        return;
    }
    const QVector<QGetFeaturesThread *> allWorkers = workers();
    if (std::any_of(allWorkers.cbegin(), allWorkers.cend(),
                    [](const QGetFeaturesThread *worker) { return worker->isRunning(); })) {
        // A description without features leaves a tree that is open and still empty.
        StopThread(true);
    }
    if (!m_bReadyForDelete) {
        // Also a tree whose root was deleted has been stopped.
        StopThread(false);
    }
    task->GetXMLDomDocument(m_domDocument);
    takeDeviceType();
    applyAccessMode(accessMode);
    buildTree();
    if (m_pSearchEdit) {
        m_pSearchEdit->clear();
        m_pDescriptionEdit->clear();
    }
    if (haveAllWorkers()) {
        giveThreadsTheirData();
        m_bFirstUpdate = true;
        m_bFirstUpdateOfAll = true;
        ShowLoadingFeatures(true, false);
        if (scope.treeIsGoing() || !cameraTask()) {
            hideLoading();
            m_domDocument.clear();
            return;
        }
        UpdateFeatures(FEATURES_UPDATE_ALL, QStringList(), QGetFeaturesThread::UPDATE_EVERYTHING);
    }
    m_pPollingTimer->start(POLLING_INTERVAL_MS);
    m_domDocument.clear();
    tellChannels();
}

void VexaFeatureTree::OnResartCameraOpen(unsigned int accessMode)
{
    const TreeCallScope scope(this);
    if (!m_pTreeView || !haveAllWorkers()) {
        return;
    }
    StopThread(true);
    const StepPages::Widgets pages = StepPages::takeDown(m_lCameraID);
    m_pTreeView->ClearTreeViewInfo();
    clearMaps();
    m_domDocument.clear();
    // Whoever heard of the end of a job may have removed the tree.
    QCameraTask *task = scope.treeIsGoing() ? nullptr : cameraTask();
    if (!task) {
        return;
    }
    task->GetXMLDomDocument(m_domDocument);
    qInfo("OnResartCameraOpen 1");
    takeDeviceType();
    applyAccessMode(accessMode);
    qInfo("OnResartCameraOpen 2");
    buildTree();
    qInfo("OnResartCameraOpen 3");
    m_pSearchEdit->clear();
    giveThreadsTheirData();
    m_bFirstUpdateOfAll = true;
    StopThread(false);
    qInfo() << "setViewForbiddenUpdate" << false;
    setViewForbiddenUpdate(false);
    UpdateFeatures(FEATURES_UPDATE_ALL, QStringList(), QGetFeaturesThread::UPDATE_EVERYTHING);
    qInfo("OnResartCameraOpen 4");
    m_pPollingTimer->start(POLLING_INTERVAL_MS);
    qInfo("OnResartCameraOpen 5");
    m_domDocument.clear();
    tellChannels();
    StepPages::layAnew(pages, m_lCameraID);
    qInfo("OnResartCameraOpen 6------------------------------------");
}

void VexaFeatureTree::takeDeviceType()
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *basicTask = manager ? manager->GetTaskByIDEx(m_lCameraID) : nullptr;
    if (basicTask) {
        m_strSerialNumber = basicTask->_GetCameraSerialNum();
        m_nDeviceType = static_cast<int>(basicTask->_GetDevType());
    }
}

void VexaFeatureTree::applyAccessMode(unsigned int accessMode)
{
    if (accessMode == ACCESS_MODE_READ_ONLY) {
        m_bCanEdit = false;
        m_pTreeView->setDelegateEnable(false);
    }
}

void VexaFeatureTree::buildTree()
{
    m_lOpenedCameraID = m_lCameraID;
    m_elementsDocument = m_domDocument;
    m_pBuilder->reset();
    m_pBuilder->GenerateDomElementMap(m_domDocument.documentElement());
    m_pBuilder->createItems(m_domDocument, m_pTreeView);
    m_pTreeView->setCameraAndRoot(m_lCameraID, m_pBuilder->rootItem());
    m_pTreeView->expandAllRows();
    m_pTreeView->openEditors(m_pBuilder->rootItem());
    if (m_pToolBar) {
        m_pToolBar->setExpanded();
    }
    emit SigExpandTree();
    m_pMaps->generate(m_domDocument.documentElement(), m_pBuilder->elementMap(),
                      m_pBuilder->allTreeItems().keys());
}

void VexaFeatureTree::giveThreadsTheirData()
{
    const QVector<QGetFeaturesThread *> allWorkers = workers();
    for (QGetFeaturesThread *worker : allWorkers) {
        worker->SetThreadData(m_lCameraID, m_pBuilder->elementMap(), m_pBuilder->allTreeItems(),
                              m_pMaps->pollingMap());
    }
}

void VexaFeatureTree::tellChannels()
{
    QCameraTask *task = cameraTask();
    if (!task) {
        return;
    }
    const bool containsDMCode = propertyItemByName(QStringLiteral("dm_version")) != nullptr;
    const unsigned int count = task->channelCount();
    for (unsigned int index = 0; index < count; ++index) {
        unsigned int channelIndex = index;
        if (QChannelTask *channel = task->getChannelTaskById(channelIndex)) {
            channel->SetContainDMCode(containsDMCode);
        }
    }
}

void VexaFeatureTree::OnCameraStartShot()
{
    m_bUpdatePending = false;
    updateAfterShot();
}

void VexaFeatureTree::OnCameraStopShot()
{
    m_bUpdatePending = true;
    updateAfterShot();
}

void VexaFeatureTree::updateAfterShot()
{
    ClearTreeViewInfo();
    QCameraTask *task = cameraTask();
    if (!task) {
        return;
    }
    if (task->IsOtherCamera()) {
        UpdateFeatures(FEATURES_UPDATE_ALL, QStringList(), QGetFeaturesThread::UPDATE_REFRESH);
    } else {
        UpdateFeatures(FEATURES_UPDATE_TLPARAMSLOCKED, QStringList(),
                       QGetFeaturesThread::UPDATE_EVERYTHING);
    }
}

void VexaFeatureTree::ClearTreeViewInfo()
{
    if (m_pTreeView) {
        m_pTreeView->giveUpEditor();
    }
}

QVector<QGetFeaturesThread *> VexaFeatureTree::workers() const
{
    QVector<QGetFeaturesThread *> all;
    for (QGetFeaturesThread *worker : {m_pLockAndRelativeThread, m_pTimerAndAllThread,
                                       m_pPollingThread, m_pInvalidateUpdateThread}) {
        if (worker) {
            all.append(worker);
        }
    }
    return all;
}

bool VexaFeatureTree::haveAllWorkers() const
{
    return m_pLockAndRelativeThread && m_pTimerAndAllThread && m_pPollingThread
        && m_pInvalidateUpdateThread;
}

void VexaFeatureTree::StopThread(bool stop)
{
    if (!haveAllWorkers()) {
        return;
    }
    const TreeCallScope scope(this);
    stopUpdates(stop);
    if (stop) {
        stopFeatureFileJob();
    }
}

void VexaFeatureTree::stopUpdates(bool stop)
{
    m_pMaps->setStopRequested(stop);
    const QVector<QGetFeaturesThread *> allWorkers = workers();
    if (stop) {
        // All four let go before the first is waited for.
        for (QGetFeaturesThread *worker : allWorkers) {
            worker->RequestStop();
        }
    }
    for (QGetFeaturesThread *worker : allWorkers) {
        worker->SetStopThread(stop, true);
    }
    if (stop) {
        for (QFuture<void> &future : m_futures) {
            future.waitForFinished();
        }
        m_futures.clear();
    }
}

void VexaFeatureTree::OnCameraClose()
{
    const TreeCallScope scope(this);
    StopThread(true);
    if (!m_pSearchEdit || !m_pTreeView || !m_pPollingTimer) {
        return;
    }
    m_pPollingTimer->stop();
    m_pAutoTriggerTimer->stop();
    qInfo().noquote() << QStringLiteral("VexaFeatureTree::OnCameraClose begin ")
            + QString::number(m_lCameraID);
    StepPages::takeDown(m_lCameraID);
    m_pTreeView->ClearTreeViewInfo();
    clearMaps();
    hideLoading();
    qInfo().noquote() << QStringLiteral("VexaFeatureTree::OnCameraClose end ")
            + QString::number(m_lCameraID);
    m_lCameraID = NO_CAMERA_ID;
    m_pDescriptionEdit->clear();
}

void VexaFeatureTree::readyForDelete()
{
    qInfo().noquote() << QStringLiteral("VexaFeatureTree::readyForDelete")
            + QString::number(m_lCameraID);
    m_bReadyForDelete = true;
    hideLoading();
    StopThread(true);
}

void VexaFeatureTree::removeCameraID(long)
{
    StopThread(true);
    StepPages::takeDown(m_lCameraID);
    if (m_pTreeView) {
        m_pTreeView->ClearTreeViewInfo();
    }
    clearMaps();
    m_pBuilder->deleteRoot();
}

void VexaFeatureTree::clearMaps()
{
    ++m_nTimesCleared;
    m_pContextItem = nullptr;
    m_pendingInvalidations.clear();
    m_bLevelPassPending = false;
    if (m_pInvalidateTimer) {
        m_pInvalidateTimer->stop();
    }
    for (QGetFeaturesThread *worker : workers()) {
        worker->SetThreadData(m_lCameraID, QGetFeaturesThread::ElementMap(),
                              QGetFeaturesThread::ItemMap(), QGetFeaturesThread::PollingTable());
    }
    m_pBuilder->reset();
    m_pMaps->clear();
    m_elementsDocument.clear();
}

void VexaFeatureTree::Release()
{
    delete m_pMessageBox;
    ClearTreeViewInfo();
    qInfo("VexaFeatureTree::Release begin OnCameraClose");
    OnCameraClose();
    for (QGetFeaturesThread **worker : {&m_pInvalidateUpdateThread, &m_pLockAndRelativeThread,
                                        &m_pTimerAndAllThread, &m_pPollingThread}) {
        delete *worker;
        *worker = nullptr;
    }
    qInfo("VexaFeatureTree::Release end OnCameraClose");
    delete m_pImExThread;
    m_pImExThread = nullptr;
    m_pBuilder->deleteRoot();
    m_domDocument.clear();
    VexaListenTools::instance()->removeListener(this);
    for (QTimer **timer :
         {&m_pPollingTimer, &m_pInvalidateTimer, &m_pRefreshTimer, &m_pAutoTriggerTimer}) {
        if (*timer) {
            (*timer)->stop();
        }
        delete *timer;
        *timer = nullptr;
    }
    releaseWidgets();
}
