#include "host/devicetask/CameraHost.h"

#include "host/devicetask/CameraTaskFactory.h"
#include "host/devicetask/ClosingDevices.h"
#include "host/devicetask/DeviceConnection.h"
#include "host/devicetask/GLibLog.h"
#include "host/devicetask/LossSink.h"
#include "host/devicetask/OperateThread.h"
#include "host/devicetask/TaskRecord.h"
#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeWriter.h"

#include <QThread>

namespace {

const QString TL_PARAMS_LOCKED = QStringLiteral("TLParamsLocked");
const QString ACQUISITION_START = QStringLiteral("AcquisitionStart");
const QString ACQUISITION_STOP = QStringLiteral("AcquisitionStop");

/// Longest time that a new opening waits for cameras whose closing is still under way, in ms.
constexpr int CLOSING_TIME = 5000;

bool hasNode(QCameraTask &task, const QString &name)
{
    const int mode = task.GetAccessMode(name, nullptr);
    return mode == NODE_WO || mode == NODE_RW;
}

/// SFNC: features of the transport layer are locked while images are acquired. Aravis leaves it to the client.
bool lockTransport(QCameraTask &task, bool locked)
{
    return !hasNode(task, TL_PARAMS_LOCKED)
        || task.SetIntegerValue(TL_PARAMS_LOCKED, locked ? 1 : 0, nullptr);
}

bool runIfPresent(QCameraTask &task, const QString &command)
{
    return task.GetAccessMode(command, nullptr) == NODE_NI || task.ExecuteCommand(command, nullptr);
}

bool failed(QCameraTask &task, QString *error)
{
    if (error) {
        *error = task.GetLastErrorRemark();
    }
    return false;
}

/// What a device hears last when it is closed while it acquires images.
void stopAcquisition(const DeviceSession &session)
{
    NodeWriter::execute(session, ACQUISITION_STOP.toUtf8());
    NodeWriter::integer(session, TL_PARAMS_LOCKED.toUtf8(), 0);
}

DeviceFacts factsOf(const DeviceSource &source, DeviceConnection &connection)
{
    const std::atomic<bool> releasing{false};
    DeviceFacts facts = DeviceFacts::of(source);
    connection.call(releasing, &facts, [source](const DeviceSession &session, DeviceFacts *read) {
        *read = DeviceFacts::of(source, session);
        return DeviceError();
    });
    return facts;
}

DeviceCondition conditionOf(const TaskRecord &record)
{
    const std::shared_ptr<DeviceConnection> connection = CameraTaskFactory::connection(record);
    // A camera without a connection waits for the return of its device.
    switch (connection ? connection->state() : ConnectionState::Gone) {
    case ConnectionState::Silent:
        return DeviceCondition::NotResponding;
    case ConnectionState::Gone:
        return DeviceCondition::Lost;
    case ConnectionState::Live:
        break;
    }
    return record.m_nAccessMode == DEVICE_ACCESS_READ_ONLY ? DeviceCondition::ControlledElsewhere
                                                           : DeviceCondition::Live;
}

} // namespace

class CameraHost::Private
{
public:
    /// Tells the host of a changed condition; on any thread.
    std::function<void()> watcher(CameraHost *host, long int id) const;

    std::shared_ptr<LossSink> m_pSink;
    std::shared_ptr<OperateThread> m_pThread;
};

CameraHost::CameraHost(QObject *parent)
    : QObject(parent)
    , d(new Private)
{
    // Qt knows the type as "long" only; queued connections and spies ask for it as the signals spell it.
    qRegisterMetaType<long int>("long int");
    qRegisterMetaType<DeviceCondition>();
    GLibLog::install();
    d->m_pSink = std::make_shared<LossSink>(this);
    d->m_pThread =
        std::make_shared<OperateThread>([sink = d->m_pSink, this](long int cameraId, bool lost) {
            sink->post([this, cameraId, lost] { Q_EMIT closeRequested(cameraId, lost); });
        });
    OperateThread::setCurrent(d->m_pThread);
    CameraTaskFactory::registry().m_bUp = true;
}

CameraHost::~CameraHost()
{
    CameraTaskFactory::registry().m_bUp = false;
    d->m_pSink->detach();
    const QVector<long int> ids = CameraTaskFactory::registry().ids();
    for (const long int id : ids) {
        closeCamera(id);
    }
    OperateThread::setCurrent(nullptr);
    ClosingDevices::waitAll(CLOSING_TIME);
    delete d;
}

std::function<void()> CameraHost::Private::watcher(CameraHost *host, long int id) const
{
    return [sink = m_pSink, host, id] {
        sink->post([host, id] {
            const auto record = CameraTaskFactory::registry().find(id);
            const DeviceCondition condition = record ? conditionOf(*record) : DeviceCondition::Live;
            if (record && record->m_nTold.exchange(int(condition)) != int(condition)) {
                Q_EMIT host->conditionChanged(id, condition);
            }
        });
    };
}

CameraHost::OpenResult CameraHost::openCamera(const DeviceSource &source)
{
    OpenResult result;
    ClosingDevices::wait(source.id, CLOSING_TIME);
    const long int id = CameraTaskFactory::registry().nextId();
    const std::function<void()> watcher = d->watcher(this, id);
    const DeviceConnection::Opened opened = DeviceConnection::open(source, watcher);
    result.error = opened.error;
    if (!opened.connection) {
        return result;
    }
    result.cameraId = id;
    result.accessMode = opened.accessMode;
    const auto record = CameraTaskFactory::makeRecord(
        id, source, factsOf(source, *opened.connection), opened.accessMode, opened.connection);
    record->m_pCameraTask->moveToThread(thread());
    CameraTaskFactory::registry().add(record);
    // What happened to the device before it was entered has not been told.
    watcher();
    return result;
}

CameraHost::OpenResult CameraHost::reopenCamera(long int cameraId)
{
    OpenResult result;
    const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().find(cameraId);
    if (!record) {
        result.error = QStringLiteral("The camera is not open.");
        return result;
    }
    if (const auto former = CameraTaskFactory::exchangeConnection(*record, nullptr)) {
        former->close();
    }
    ClosingDevices::wait(record->m_source.id, CLOSING_TIME);
    const std::function<void()> watcher = d->watcher(this, cameraId);
    const DeviceConnection::Opened opened = DeviceConnection::open(record->m_source, watcher);
    result.error = opened.error;
    if (!opened.connection) {
        return result;
    }
    if (!opened.connection->answers()) {
        opened.connection->close();
        result.error = QStringLiteral("The device does not answer.");
        return result;
    }
    if (record->m_nState == TASK_CAMERA_GRABBING && opened.accessMode == DEVICE_ACCESS_CONTROL) {
        // A device may have gone on acquiring, with its features locked.
        const std::atomic<bool> releasing{false};
        bool told = false;
        opened.connection->call(releasing, &told, [](const DeviceSession &session, bool *) {
            stopAcquisition(session);
            return DeviceError();
        });
    }
    result.cameraId = cameraId;
    result.accessMode = opened.accessMode;
    result.restarted = record->m_bRestarted.exchange(false);
    record->m_nAccessMode = opened.accessMode;
    int expected = TASK_CAMERA_GRABBING;
    record->m_nState.compare_exchange_strong(expected, TASK_CAMERA_OPEN);
    CameraTaskFactory::exchangeConnection(*record, opened.connection);
    // A closing in the meantime found no connection to close.
    if (record->m_nState == TASK_CAMERA_CLOSED) {
        if (const auto late = CameraTaskFactory::exchangeConnection(*record, nullptr)) {
            late->close();
        }
        return {NO_CAMERA_ID, opened.accessMode, false, QStringLiteral("The camera is closed.")};
    }
    watcher();
    return result;
}

void CameraHost::closeCamera(long int cameraId)
{
    const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().take(cameraId);
    if (!record) {
        return;
    }
    record->m_pCameraTask->m_bReleasing = true;
    const bool grabbing = record->m_nState.exchange(TASK_CAMERA_CLOSED) == TASK_CAMERA_GRABBING;
    if (const auto connection = CameraTaskFactory::exchangeConnection(*record, nullptr)) {
        connection->close(grabbing ? DeviceConnection::LastWords(stopAcquisition)
                                   : DeviceConnection::LastWords());
    }
}

DeviceCondition CameraHost::condition(long int cameraId) const
{
    const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().find(cameraId);
    return record ? conditionOf(*record) : DeviceCondition::Live;
}

bool CameraHost::startGrabbing(long int cameraId, QString *error)
{
    const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().find(cameraId);
    if (!record) {
        if (error) {
            *error = QStringLiteral("The camera is not open.");
        }
        return false;
    }
    QCameraTask &task = *record->m_pCameraTask;
    if (!lockTransport(task, true)) {
        return failed(task, error);
    }
    if (!runIfPresent(task, ACQUISITION_START)) {
        failed(task, error);
        lockTransport(task, false);
        return false;
    }
    int expected = TASK_CAMERA_OPEN;
    record->m_nState.compare_exchange_strong(expected, TASK_CAMERA_GRABBING);
    return true;
}

bool CameraHost::stopGrabbing(long int cameraId, QString *error)
{
    const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().find(cameraId);
    if (!record) {
        if (error) {
            *error = QStringLiteral("The camera is not open.");
        }
        return false;
    }
    QCameraTask &task = *record->m_pCameraTask;
    if (!runIfPresent(task, ACQUISITION_STOP) || !lockTransport(task, false)) {
        return failed(task, error);
    }
    int expected = TASK_CAMERA_GRABBING;
    record->m_nState.compare_exchange_strong(expected, TASK_CAMERA_OPEN);
    return true;
}

void CameraHost::setCallObserver(void (*observer)())
{
    CameraTaskFactory::registry().m_pCallObserver = observer;
}

void CameraHost::setPromptSuppressed(long int cameraId, bool suppressed)
{
    if (const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().find(cameraId)) {
        record->m_bPromptSuppressed = suppressed;
    }
}
