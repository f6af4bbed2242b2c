#include "tree/VexaFeatureTree.h"

#include "ControlKit/CustomLoadingDialog.h"
#include "ControlKit/CustomMenu.h"
#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "ShellServicesModule/QFunction.h"
#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaFeatureToolBar.h"
#include "tree/CameraLookup.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "view/VexaFeatureTreeView.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDialog>
#include <QEvent>
#include <QMetaMethod>
#include <QMutexLocker>
#include <QThread>
#include <QTimer>

VexaFeatureTree::VexaFeatureTree(long int cameraId, QWidget *parent)
    : IVexaFeatureWidget(PARENT_FEATURE_TREE, parent)
    , m_lOpenedCameraID(cameraId)
    , m_pBuilder(std::make_unique<FeatureTreeBuilder>())
    , m_pMaps(std::make_unique<NodeDependencyMaps>())
{
    m_lCameraID = cameraId;
    VexaListenTools::instance()->addListener(this, PRIORITY_LEVEL_1);
    InitWidget();
}

VexaFeatureTree::~VexaFeatureTree()
{
    qInfo("~release VexaFeatureTree:%ld", m_lOpenedCameraID);
    QList<VexaFeatureObserverable *> observers;
    {
        const QMutexLocker locker(&m_mutex);
        observers.swap(m_observers);
    }
    // On a copy, outside the mutex: an observer may call back into the tree.
    for (VexaFeatureObserverable *observer : qAsConst(observers)) {
        observer->notifyFeatureTreeReleased(m_lOpenedCameraID);
    }
    hideLoading();
    qInfo("VexaFeatureTree::~VexaFeatureTree Release begin");
    Release();
    qInfo("VexaFeatureTree::~VexaFeatureTree Release end");
}

bool VexaFeatureTree::InitWidget()
{
    // A host may call it after the constructor has.
    if (haveAllWorkers() || (InitCtrl() && InitLayout() && InitSignals())) {
        return true;
    }
    Release();
    return false;
}

bool VexaFeatureTree::InitMenu()
{
    return true;
}

void VexaFeatureTree::deleteWhenIdle()
{
    hide();
    setParent(nullptr);
    if (m_nCallsOnStack == 0) {
        delete this;
        return;
    }
    m_bDeleteWhenIdle = true;
    // One of its calls may wait for an answer, which would change nothing any more.
    const auto dialogs = findChildren<QDialog *>(QString(), Qt::FindDirectChildrenOnly);
    for (QDialog *dialog : dialogs) {
        if (dialog->isVisible()) {
            dialog->reject();
        }
    }
}

QCameraTask *VexaFeatureTree::cameraTask() const
{
    return cameraTaskOf(m_lCameraID);
}

long int VexaFeatureTree::GetCurCameraID() const
{
    return m_lCameraID;
}

QString VexaFeatureTree::GetCurCameraName() const
{
    QCameraTask *task = cameraTask();
    return task ? task->GetCameraName() : QString();
}

bool VexaFeatureTree::isCanEdit() const
{
    return m_bCanEdit;
}

bool VexaFeatureTree::IsUpdateFeatureOnce() const
{
    return !m_bFirstUpdateOfAll;
}

void VexaFeatureTree::SetIsUpdateFeatureOnce(bool once)
{
    m_bFirstUpdateOfAll = !once;
}

void VexaFeatureTree::setMessageFalse(bool enable)
{
    m_bMessageEnable = enable;
}

void VexaFeatureTree::setTestRunning(bool running)
{
    m_bTestRunning = running;
}

void VexaFeatureTree::setViewForbiddenUpdate(bool forbid)
{
    if (m_pTreeView) {
        m_pTreeView->setForbidUpdate(forbid);
    }
}

void VexaFeatureTree::UpdateCameraItemName()
{
}

void VexaFeatureTree::UpdateToolBarBtn(int state, int cameraId, bool busy)
{
    if (cameraId == m_lCameraID && m_pToolBar) {
        m_nToolBarState = state;
        m_pToolBar->UpdateToolBarBtn(state, cameraId, busy);
    }
}

void VexaFeatureTree::AddFeatureObserverable(VexaFeatureObserverable *observer)
{
    const QMutexLocker locker(&m_mutex);
    if (observer && !m_observers.contains(observer)) {
        m_observers.append(observer);
    }
}

void VexaFeatureTree::RemoveFeatureObserverable(VexaFeatureObserverable *observer)
{
    const QMutexLocker locker(&m_mutex);
    m_observers.removeAll(observer);
}

void VexaFeatureTree::notify(int event, void *data)
{
    if (!data) {
        return;
    }
    // Told on any thread, with data that live no longer than the call: on the tree's own it runs at once.
    if (event == VEXA_EVENT_REFRESH_NODE) {
        const auto *node = static_cast<const VexaNodeEventData *>(data);
        const QString name = QString::fromUtf8(node->nodeName);
        QMetaObject::invokeMethod(this, [this, cameraId = node->cameraId, name] {
            if (!name.isEmpty() && cameraId == m_lCameraID && cameraId != NO_CAMERA_ID) {
                UpdateFeatures(FEATURES_UPDATE_INVALIDATOR, {name},
                               QGetFeaturesThread::UPDATE_REFRESH);
            }
        });
    } else if (event == VEXA_EVENT_RESET_DEVICE) {
        const long int cameraId = *static_cast<const long int *>(data);
        QMetaObject::invokeMethod(this, [this, cameraId] {
            if (cameraId == m_lCameraID && cameraId != NO_CAMERA_ID) {
                OnCommandNodeBtnClicked(QStringLiteral("DeviceReset"));
            }
        });
    }
}

void VexaFeatureTree::connectNotify(const QMetaMethod &signal)
{
    IVexaFeatureWidget::connectNotify(signal);
    tellWorkersWhoListens();
}

void VexaFeatureTree::disconnectNotify(const QMetaMethod &signal)
{
    IVexaFeatureWidget::disconnectNotify(signal);
    // A receiver that is being destroyed holds a lock that isSignalConnected may take too.
    QMetaObject::invokeMethod(this, &VexaFeatureTree::tellWorkersWhoListens, Qt::QueuedConnection);
}

void VexaFeatureTree::tellWorkersWhoListens()
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(this, &VexaFeatureTree::tellWorkersWhoListens,
                                  Qt::QueuedConnection);
        return;
    }
    static const QMetaMethod smartTuneData =
        QMetaMethod::fromSignal(&VexaFeatureTree::SigGetFeatureValueByThread);
    const bool heard = isSignalConnected(smartTuneData);
    for (QGetFeaturesThread *worker : workers()) {
        worker->SetSmartTuneHeard(heard);
    }
}

void VexaFeatureTree::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && m_pUserLevelCombo) {
        RefreshWidgetInfo();
        translatePropTree(rootItem());
    }
    IVexaFeatureWidget::changeEvent(event);
}
