#include "host/workbench/CameraSession.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/shellservices/ShellHost.h"
#include "host/workbench/WorkbenchTexts.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QPointer>
#include <QThreadPool>
#include <QtConcurrent>

namespace {

constexpr unsigned int ACCESS_READ_ONLY = 2;
constexpr int TOOL_BAR_LIVE = 1;
constexpr int TOOL_BAR_DEAD = 0;

/// Openings have threads of their own: one that waits for a device must not keep the jobs of a tree waiting.
QThreadPool *openingThreads()
{
    static QThreadPool pool;
    return &pool;
}

QCameraBasicTask *taskOf(long int cameraId)
{
    QTaskManager *manager = QTaskManager::Instance();
    return manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
}

} // namespace

CameraSession::CameraSession(CameraHost &host, std::shared_ptr<DeviceSource> source,
                             QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_pSource(std::move(source))
{
    connect(&m_opening, &QFutureWatcherBase::finished, this, &CameraSession::takeOpenResult);
    connect(&m_host, &CameraHost::cameraLost, this, &CameraSession::onCameraLost);
    connect(&m_host, &CameraHost::closeRequested, this, &CameraSession::onCloseRequested);
}

CameraSession::~CameraSession()
{
    blockSignals(true);
    close();
    if (m_opening.isRunning()) {
        m_opening.disconnect(this);
        m_opening.waitForFinished();
        takeOpenResult();
    }
}

void CameraSession::setState(State state)
{
    if (m_state != state) {
        m_state = state;
        emit stateChanged();
    }
}

void CameraSession::open()
{
    if (m_state != State::Idle) {
        return;
    }
    setState(State::Opening);
    m_opening.setFuture(QtConcurrent::run(openingThreads(), [&host = m_host, source = m_pSource] {
        return host.openCamera(*source);
    }));
}

void CameraSession::takeOpenResult()
{
    const CameraHost::OpenResult result = m_opening.result();
    if (m_state != State::Opening) {
        if (result.cameraId != NO_CAMERA_ID) {
            m_host.closeCamera(result.cameraId);
        }
        return;
    }
    if (result.cameraId == NO_CAMERA_ID) {
        setState(State::Closed);
        log(MESSAGE_LOG_ERROR, workbenchText("lang_workbench_openfailed").arg(result.error));
        emit openFailed(result.error);
        return;
    }
    m_lCameraID = result.cameraId;
    bringUpTree(result.accessMode);
    if (m_lostEarly.contains(result.cameraId)) {
        onCameraLost(result.cameraId);
    }
}

void CameraSession::bringUpTree(unsigned int accessMode)
{
    const long int cameraId = m_lCameraID;
    VexaMainFeatureWidget *mainWidget = VexaMainFeatureWidget::instance();
    const QPointer<VexaFeatureTree> tree = mainWidget->featureTree(cameraId, true);
    if (!tree) {
        return;
    }
    show();
    mainWidget->OnCameraOpen(cameraId);
    mainWidget->SetIsConnect(true, cameraId);
    const auto markUpdated = [this](long int updatedId) {
        if (updatedId == m_lCameraID && !m_bFirstUpdateDone) {
            m_bFirstUpdateDone = true;
            emit firstUpdateDone();
        }
    };
    connect(tree, &VexaFeatureTree::SigFirstEndUpdateFeature, this, markUpdated);
    setState(State::Open);
    tree->OnCameraOpen(accessMode);
    // A loading dialog of the tree runs events: the camera may be closed or lost by now.
    if (m_lCameraID != cameraId || !tree) {
        return;
    }
    updateToolBar();
    log(MESSAGE_LOG_INFO, workbenchText("lang_workbench_opened"));
    if (accessMode == ACCESS_READ_ONLY) {
        log(MESSAGE_LOG_WARNING, workbenchText("lang_workbench_readonly"));
    }
    if (!tree->isInitialized(cameraId)) {
        log(MESSAGE_LOG_WARNING, workbenchText("lang_workbench_noroot"));
        markUpdated(cameraId);
    }
}

VexaFeatureTree *CameraSession::tree() const
{
    return m_lCameraID == NO_CAMERA_ID
        ? nullptr
        : VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().value(m_lCameraID, nullptr);
}

QString CameraSession::displayName() const
{
    QCameraBasicTask *task = taskOf(m_lCameraID);
    const QString name = task ? task->_GetCameraName() : QString();
    return name.isEmpty() ? m_pSource->name : name;
}

void CameraSession::show()
{
    ShellHost::instance()->setCurrentCameraID(m_lCameraID);
    VexaMainFeatureWidget::instance()->setCurrentCameraID(m_lCameraID);
    updateToolBar();
}

void CameraSession::updateToolBar()
{
    if (m_lCameraID != NO_CAMERA_ID) {
        VexaMainFeatureWidget::instance()->UpdateToolBarBtn(
            isLive() ? TOOL_BAR_LIVE : TOOL_BAR_DEAD, static_cast<int>(m_lCameraID), false);
    }
}

bool CameraSession::startGrabbing()
{
    QString error;
    if (m_state != State::Open) {
        return false;
    }
    if (!m_host.startGrabbing(m_lCameraID, &error)) {
        log(MESSAGE_LOG_ERROR, workbenchText("lang_workbench_startfailed").arg(error));
        return false;
    }
    setState(State::Grabbing);
    if (VexaFeatureTree *featureTree = tree()) {
        featureTree->OnCameraStartShot();
    }
    updateToolBar();
    return true;
}

bool CameraSession::stopGrabbing()
{
    QString error;
    if (m_state != State::Grabbing) {
        return false;
    }
    if (!m_host.stopGrabbing(m_lCameraID, &error)) {
        log(MESSAGE_LOG_ERROR, workbenchText("lang_workbench_stopfailed").arg(error));
        return false;
    }
    setState(State::Open);
    if (VexaFeatureTree *featureTree = tree()) {
        featureTree->OnCameraStopShot();
    }
    updateToolBar();
    return true;
}

void CameraSession::close()
{
    if (m_lCameraID != NO_CAMERA_ID) {
        takeDown(false);
    } else if (m_state == State::Opening) {
        setState(State::Closed);
    }
}

void CameraSession::onCameraLost(long int cameraId)
{
    if (m_state == State::Opening && m_lCameraID == NO_CAMERA_ID) {
        m_lostEarly.insert(cameraId);
    }
    if (cameraId != m_lCameraID || !isLive()) {
        return;
    }
    log(MESSAGE_LOG_ERROR, workbenchText("lang_workbench_lost"));
    m_state = State::Lost;
    updateToolBar();
    // The module asks the device layer for the closing, which comes back as closeRequested.
    VexaMainFeatureWidget::instance()->SetIsConnect(false, cameraId);
    emit stateChanged();
}

void CameraSession::onCloseRequested(long int cameraId)
{
    if (cameraId == m_lCameraID) {
        takeDown(m_state == State::Lost);
    }
}

void CameraSession::takeDown(bool lost)
{
    // Stopping the tree's workers runs events: from here on this session has no camera.
    const long int cameraId = m_lCameraID;
    const QPointer<VexaFeatureTree> featureTree = tree();
    const QString name = displayName();
    m_lCameraID = NO_CAMERA_ID;
    m_state = lost ? State::Lost : State::Closed;

    VexaMainFeatureWidget *mainWidget = VexaMainFeatureWidget::instance();
    mainWidget->UpdateToolBarBtn(TOOL_BAR_DEAD, static_cast<int>(cameraId), false);
    QCameraBasicTask *task = taskOf(cameraId);
    if (task && task->_CameraTak()) {
        task->_CameraTak()->m_bReleasing = true;
    }
    if (featureTree) {
        featureTree->readyForDelete();
    }
    if (lost) {
        mainWidget->OnCameraDisconnect(cameraId);
    } else {
        mainWidget->OnCameraClose(cameraId);
    }
    if (featureTree) {
        featureTree->OnCameraClose();
    }
    mainWidget->removeFeatureTree(cameraId);
    m_host.closeCamera(cameraId);
    if (!lost) {
        QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_INFO, name,
                                                workbenchText("lang_workbench_closed"));
    }
    emit stateChanged();
}

void CameraSession::log(_MESSAGE_LOG_LEVEL_ level, const QString &text)
{
    QFunction::Instance()->InsertMessageLog(level, displayName(), text);
}
