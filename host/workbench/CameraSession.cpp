#include "host/workbench/CameraSession.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "host/workbench/CameraPage.h"
#include "host/workbench/DeviceThreads.h"
#include "host/workbench/ReaderTables.h"
#include "host/workbench/WorkbenchTexts.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QPointer>
#include <QTimer>
#include <QtConcurrent>

#include <algorithm>

namespace {

/// What VexaFeatureTree::UpdateFeatures is asked for: one pass over all items that reads values, visibility and access.
constexpr int ALL_FEATURES = 0;
constexpr int READ_EVERYTHING = 13;

/// A pass that was under way when the device came back may have left out what failed before: one more is needed.
constexpr int PASSES_AFTER_RETURN = 2;
constexpr std::chrono::seconds PAUSE_BEFORE_NEXT_PASS{1};
/// An import may end at one of its dialogs, of which nobody is told.
constexpr std::chrono::milliseconds TOOL_BAR_LOOK{200};

QCameraBasicTask *taskOf(long int cameraId)
{
    QTaskManager *manager = QTaskManager::Instance();
    return manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
}

bool isWell(DeviceCondition condition)
{
    return condition == DeviceCondition::Live || condition == DeviceCondition::ControlledElsewhere;
}

DeviceCondition conditionFor(unsigned int accessMode)
{
    return accessMode == DEVICE_ACCESS_READ_ONLY ? DeviceCondition::ControlledElsewhere
                                                 : DeviceCondition::Live;
}

} // namespace

CameraSession::CameraSession(CameraHost &host, std::shared_ptr<DeviceSource> source,
                             QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_pSource(std::move(source))
    , m_return(host)
{
    m_toolBarTimer.setSingleShot(true);
    m_toolBarTimer.setInterval(TOOL_BAR_LOOK);
    connect(&m_toolBarTimer, &QTimer::timeout, this, &CameraSession::updateToolBar);
    connect(&m_opening, &QFutureWatcherBase::finished, this, &CameraSession::takeOpenResult);
    connect(&m_grabbing, &QFutureWatcherBase::finished, this, &CameraSession::takeGrabResult);
    connect(&m_return, &DeviceReturn::returned, this, &CameraSession::onReturned);
    connect(&m_return, &DeviceReturn::idle, this, &CameraSession::deleteIfIdle);
    // The module asks the device layer for the closing, which comes back as closeRequested.
    connect(&m_return, &DeviceReturn::timedOut, this,
            [this] { VexaMainFeatureWidget::instance()->SetIsConnect(false, m_lCameraID); });
    connect(&m_host, &CameraHost::conditionChanged, this, &CameraSession::onConditionChanged);
    connect(&m_host, &CameraHost::closeRequested, this, &CameraSession::onCloseRequested);
}

CameraSession::~CameraSession()
{
    blockSignals(true);
    m_opening.disconnect(this);
    m_grabbing.disconnect(this);
    close();
    m_grabbing.waitForFinished();
    if (m_bOpening) {
        m_opening.waitForFinished();
        takeOpenResult();
    }
}

CameraSession::State CameraSession::state() const
{
    if (m_lCameraID != NO_CAMERA_ID) {
        switch (m_condition) {
        case DeviceCondition::Lost:
            return State::Lost;
        case DeviceCondition::NotResponding:
            return State::NotResponding;
        case DeviceCondition::ControlledElsewhere:
            return State::ReadOnly;
        case DeviceCondition::Live:
            break;
        }
    }
    return m_phase;
}

bool CameraSession::isLive() const
{
    return m_lCameraID != NO_CAMERA_ID && isWell(m_condition);
}

bool CameraSession::isBusy() const
{
    return m_bOpening || m_bGrabCall || m_return.isBusy();
}

void CameraSession::deleteWhenIdle()
{
    m_bDeleteWhenIdle = true;
    deleteIfIdle();
}

void CameraSession::deleteIfIdle()
{
    if (m_bDeleteWhenIdle && !isBusy()) {
        deleteLater();
    }
}

void CameraSession::open()
{
    if (m_phase != State::Idle) {
        return;
    }
    m_phase = State::Opening;
    m_bOpening = true;
    m_opening.setFuture(QtConcurrent::run(deviceThreads(), [&host = m_host, source = m_pSource] {
        return host.openCamera(*source);
    }));
    emit stateChanged();
}

void CameraSession::takeOpenResult()
{
    const CameraHost::OpenResult result = m_opening.result();
    m_bOpening = false;
    if (m_phase != State::Opening) {
        m_host.closeCamera(result.cameraId);
        deleteIfIdle();
        return;
    }
    if (result.cameraId == NO_CAMERA_ID) {
        log(MESSAGE_LOG_ERROR, "lang_workbench_openfailed", {result.error});
        m_phase = State::Closed;
        emit stateChanged();
        emit openFailed(result.error);
        return;
    }
    m_lCameraID = result.cameraId;
    m_nAccessMode = result.accessMode;
    m_condition = conditionFor(result.accessMode);
    m_since = QDateTime::currentDateTime();
    m_phase = State::Open;
    const QPointer<CameraSession> self = this;
    bringUpTree("lang_workbench_opened");
    // The device may have been lost before anybody knew the camera's number.
    if (self) {
        onConditionChanged(result.cameraId, m_host.condition(result.cameraId));
    }
}

void CameraSession::bringUpTree(const char *noticeKey)
{
    const QPointer<CameraSession> self = this;
    const long int cameraId = m_lCameraID;
    const QPointer<VexaFeatureTree> made = CameraPage::make(cameraId);
    if (!made) {
        return;
    }
    connect(made, &VexaFeatureTree::SigFirstEndUpdateFeature, this, &CameraSession::onPassEnded);
    emit stateChanged();
    if (self && made && m_lCameraID == cameraId) {
        made->OnCameraOpen(m_nAccessMode);
    }
    // A loading dialog of the tree runs events: the camera may be closed by now, and the session gone.
    if (!self || !made || m_lCameraID != cameraId) {
        return;
    }
    updateToolBar();
    log(MESSAGE_LOG_INFO, noticeKey);
    if (m_nAccessMode == DEVICE_ACCESS_READ_ONLY) {
        log(MESSAGE_LOG_WARNING, "lang_workbench_readonly");
    }
    if (!made->isInitialized(cameraId)) {
        log(MESSAGE_LOG_WARNING, "lang_workbench_noroot");
        onPassEnded(cameraId);
    }
}

void CameraSession::onPassEnded(long int cameraId)
{
    if (cameraId != m_lCameraID || !isLive()) {
        return;
    }
    if (!isWell(m_host.condition(cameraId))) {
        // The pass may have read nothing. When the device answers again before the session hears of it, there is no
        // return either.
        QTimer::singleShot(PAUSE_BEFORE_NEXT_PASS, this, [this, cameraId] {
            if (cameraId == m_lCameraID && isLive()) {
                readAgain();
            }
        });
        return;
    }
    if (m_nPassesToGo > 0 && --m_nPassesToGo > 0) {
        readAgain();
    } else if (!m_bFirstUpdateDone) {
        m_bFirstUpdateDone = true;
        makeTables();
        emit firstUpdateDone();
    }
}

void CameraSession::makeTables()
{
    VexaFeatureTree *featureTree = tree();
    if (m_pTables || !featureTree) {
        return;
    }
    m_pTables = std::make_unique<ReaderTables>(*featureTree);
    if (m_pTables->isEmpty()) {
        m_pTables.reset();
    } else {
        emit tablesChanged();
    }
}

void CameraSession::removeTables()
{
    if (!m_pTables) {
        return;
    }
    m_readings.erase(std::remove_if(m_readings.begin(), m_readings.end(),
                                    [](const auto &reading) { return reading.isFinished(); }),
                     m_readings.end());
    m_readings += m_pTables->reading();
    // First off the screen, then taken back.
    const std::unique_ptr<ReaderTables> removed = std::move(m_pTables);
    emit tablesChanged();
}

void CameraSession::refresh()
{
    m_bFirstUpdateDone = false;
    if (isLive()) {
        readAgain();
    }
}

void CameraSession::readAgain()
{
    if (VexaFeatureTree *featureTree = tree()) {
        featureTree->SetIsUpdateFeatureOnce(false);
        featureTree->UpdateFeatures(ALL_FEATURES, QStringList(), READ_EVERYTHING);
    }
}

VexaFeatureTree *CameraSession::tree() const
{
    return CameraPage::tree(m_lCameraID);
}

QString CameraSession::displayName() const
{
    QCameraBasicTask *task = taskOf(m_lCameraID);
    const QString name = task ? task->_GetCameraName() : QString();
    return name.isEmpty() ? m_pSource->name : name;
}

void CameraSession::show()
{
    CameraPage::show(m_lCameraID);
    updateToolBar();
}

void CameraSession::updateToolBar()
{
    if (m_lCameraID != NO_CAMERA_ID) {
        CameraPage::setToolBar(m_lCameraID, isLive());
        if (CameraPage::hasFileJob(m_lCameraID)) {
            m_toolBarTimer.start();
        }
    }
}

void CameraSession::startGrabbing()
{
    if (state() == State::Open) {
        grab(true);
    }
}

void CameraSession::stopGrabbing()
{
    if (state() == State::Grabbing) {
        grab(false);
    }
}

void CameraSession::grab(bool start)
{
    // The call of a session that lost its device in the middle may still be under way.
    if (m_bGrabCall) {
        return;
    }
    m_bGrabCall = true;
    m_bStartsGrabbing = start;
    m_phase = start ? State::Starting : State::Stopping;
    m_grabbing.setFuture(QtConcurrent::run(
        deviceThreads(), [&host = m_host, cameraId = m_lCameraID, start]() -> GrabResult {
            GrabResult result;
            result.done = start ? host.startGrabbing(cameraId, &result.error)
                                : host.stopGrabbing(cameraId, &result.error);
            return result;
        }));
    emit stateChanged();
}

void CameraSession::takeGrabResult()
{
    const GrabResult result = m_grabbing.result();
    m_bGrabCall = false;
    QCameraBasicTask *task = taskOf(m_lCameraID);
    if (!task || !task->_CameraTak()) {
        deleteIfIdle();
        return;
    }
    m_phase = task->_CameraTak()->GetCameraState() == TASK_CAMERA_GRABBING ? State::Grabbing
                                                                           : State::Open;
    if (!result.done) {
        log(MESSAGE_LOG_ERROR,
            m_bStartsGrabbing ? "lang_workbench_startfailed" : "lang_workbench_stopfailed",
            {result.error});
    } else if (VexaFeatureTree *featureTree = tree()) {
        const QPointer<CameraSession> self = this;
        if (m_bStartsGrabbing) {
            featureTree->OnCameraStartShot();
        } else {
            featureTree->OnCameraStopShot();
        }
        if (!self) {
            return;
        }
    }
    updateToolBar();
    emit stateChanged();
}

void CameraSession::close()
{
    if (m_lCameraID != NO_CAMERA_ID) {
        takeDown(false);
    } else if (m_phase == State::Opening || m_phase == State::Gone) {
        m_phase = State::Closed;
        emit stateChanged();
    }
}

void CameraSession::onConditionChanged(long int cameraId, DeviceCondition condition)
{
    // Nothing but a new connection brings a lost device back, and that is told by DeviceReturn.
    if (cameraId != m_lCameraID || m_condition == DeviceCondition::Lost
        || m_condition == condition) {
        return;
    }
    const QPointer<CameraSession> self = this;
    const DeviceCondition former = m_condition;
    m_condition = condition;
    if (former != DeviceCondition::NotResponding || condition != DeviceCondition::Lost) {
        m_since = QDateTime::currentDateTime();
    }
    updateToolBar();
    if (!isWell(condition)) {
        onTrouble(former);
    } else {
        log(MESSAGE_LOG_INFO, "lang_workbench_answers");
        m_nPassesToGo = PASSES_AFTER_RETURN;
        readAgain();
    }
    // A loading dialog of the tree runs events, in which the session may end.
    if (self) {
        emit stateChanged();
    }
    if (self && condition == DeviceCondition::Lost) {
        emit lost();
    }
}

void CameraSession::onTrouble(DeviceCondition former)
{
    const bool lost = m_condition == DeviceCondition::Lost;
    // One notice a loss: a device that stops to answer is told of once.
    if (isWell(former)) {
        log(MESSAGE_LOG_ERROR, lost ? "lang_workbench_lost" : "lang_workbench_notresponding");
    }
    if (lost) {
        m_returnDeadline.setRemainingTime(m_returnTime);
        m_return.begin(m_lCameraID, m_returnTime);
    }
}

void CameraSession::onReturned(const CameraHost::OpenResult &result)
{
    m_bRestarted = m_bRestarted || result.restarted;
    const DeviceCondition condition = m_host.condition(m_lCameraID);
    if (condition == DeviceCondition::Lost) {
        // The same loss goes on, and so does its time.
        m_return.begin(m_lCameraID, std::chrono::milliseconds(m_returnDeadline.remainingTime()));
        return;
    }
    // A tree that was read only stays so.
    const bool wasReadOnly = m_nAccessMode == DEVICE_ACCESS_READ_ONLY;
    m_nAccessMode = result.accessMode;
    m_condition = condition;
    m_since = QDateTime::currentDateTime();
    m_nPassesToGo = 0;
    m_bFirstUpdateDone = false;
    if (!m_bGrabCall) {
        m_phase = State::Open;
    }
    if (std::exchange(m_bRestarted, false)) {
        COMMONINTERFACE::RemoveCurrentCamModified(displayName());
        makeTreeAnew("lang_workbench_restarted");
    } else if (wasReadOnly || result.accessMode == DEVICE_ACCESS_READ_ONLY) {
        makeTreeAnew(wasReadOnly ? "lang_workbench_returned" : "lang_workbench_controllost");
    } else {
        rebuildTree();
    }
}

void CameraSession::rebuildTree()
{
    const QPointer<CameraSession> self = this;
    const long int cameraId = m_lCameraID;
    removeTables();
    if (VexaFeatureTree *featureTree = tree()) {
        VexaMainFeatureWidget::instance()->OnCameraOpen(cameraId);
        VexaMainFeatureWidget::instance()->SetIsConnect(true, cameraId);
        featureTree->OnResartCameraOpen(m_nAccessMode);
    }
    if (self && m_lCameraID == cameraId) {
        updateToolBar();
        log(MESSAGE_LOG_INFO, "lang_workbench_returned");
        emit stateChanged();
    }
}

void CameraSession::makeTreeAnew(const char *noticeKey)
{
    const QPointer<CameraSession> self = this;
    const long int cameraId = m_lCameraID;
    removeTables();
    CameraPage::remove(cameraId, true);
    if (self && m_lCameraID == cameraId) {
        bringUpTree(noticeKey);
    }
}

void CameraSession::onCloseRequested(long int cameraId)
{
    if (cameraId == m_lCameraID) {
        takeDown(m_condition == DeviceCondition::Lost);
    }
}

void CameraSession::takeDown(bool lost)
{
    // Stopping the tree's workers runs events: from here on this session has no camera.
    const QPointer<CameraSession> self = this;
    CameraHost &host = m_host;
    const long int cameraId = m_lCameraID;
    const QString name = displayName();
    m_lCameraID = NO_CAMERA_ID;
    m_phase = lost ? State::Gone : State::Closed;
    m_return.end();

    // First of all: whoever waits for the device, the tree's workers among them, gives up.
    QCameraBasicTask *task = taskOf(cameraId);
    if (task && task->_CameraTak()) {
        task->_CameraTak()->m_bReleasing = true;
    }
    removeTables();
    for (QFuture<PollingReading> &reading : m_readings) {
        reading.waitForFinished();
    }
    CameraPage::setToolBar(cameraId, false);
    CameraPage::remove(cameraId, lost);
    host.closeCamera(cameraId);
    // What was not saved is not this client's to save any more.
    COMMONINTERFACE::RemoveCurrentCamModified(name);
    QFunction::Instance()->InsertMessageLog(
        lost ? MESSAGE_LOG_WARNING : MESSAGE_LOG_INFO, name,
        loggedText(lost ? "lang_workbench_notreturned" : "lang_workbench_closed"));
    if (self) {
        emit stateChanged();
    }
}

void CameraSession::log(_MESSAGE_LOG_LEVEL_ level, const char *key, const QStringList &arguments)
{
    QFunction::Instance()->InsertMessageLog(level, displayName(), loggedText(key, arguments));
}
