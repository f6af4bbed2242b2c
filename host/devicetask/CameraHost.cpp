#include "host/devicetask/CameraHost.h"

#include "host/devicetask/AccessMode.h"
#include "host/devicetask/CameraTaskFactory.h"
#include "host/devicetask/DeviceConnection.h"
#include "host/devicetask/LossSink.h"
#include "host/devicetask/NodeWriter.h"
#include "host/devicetask/OperateThread.h"
#include "host/devicetask/TaskRecord.h"

#include <QThread>

namespace {

const QString TL_PARAMS_LOCKED = QStringLiteral("TLParamsLocked");
const QString ACQUISITION_START = QStringLiteral("AcquisitionStart");
const QString ACQUISITION_STOP = QStringLiteral("AcquisitionStop");

/// Longest time that a new opening waits for cameras whose closing is still under way, in ms.
constexpr int CLOSING_TIME = 5000;
/// Longest time that the closing of a grabbing camera waits for its turn, in ms.
constexpr int LAST_WORDS_TIME = 2000;

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

void dropConnection(std::shared_ptr<DeviceConnection> connection, bool grabbing)
{
    const DeviceConnection::FreeHere freeHere;
    if (grabbing) {
        connection->runLast(LAST_WORDS_TIME, [](const GcSession &session) {
            NodeWriter::execute(session, ACQUISITION_STOP.toUtf8());
            NodeWriter::integer(session, TL_PARAMS_LOCKED.toUtf8(), 0);
        });
    }
    connection.reset();
}

} // namespace

class CameraHost::Private
{
public:
    std::shared_ptr<LossSink> m_pSink;
    std::shared_ptr<OperateThread> m_pThread;
};

CameraHost::CameraHost(QObject *parent)
    : QObject(parent)
    , d(new Private)
{
    // Qt knows the type as "long" only; queued connections and spies ask for it as the signals spell it.
    qRegisterMetaType<long int>("long int");
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
    delete d;
}

CameraHost::OpenResult CameraHost::openCamera(const DeviceSource &source)
{
    OpenResult result;
    // A camera that is opened again right after its closing has to be free first.
    d->m_pThread->waitIdle(CLOSING_TIME);
    const long int id = CameraTaskFactory::registry().nextId();
    const auto onLost = [sink = d->m_pSink, this, id] {
        sink->post([this, id] {
            if (CameraTaskFactory::registry().find(id)) {
                Q_EMIT cameraLost(id);
            }
        });
    };
    DeviceConnection::Opened opened = DeviceConnection::open(source, onLost);
    result.error = opened.error;
    if (!opened.connection) {
        return result;
    }
    result.cameraId = id;
    result.accessMode = opened.accessMode;
    const auto record =
        CameraTaskFactory::makeRecord(id, source, opened.accessMode, opened.connection);
    record->m_pCameraTask->moveToThread(thread());
    CameraTaskFactory::registry().add(record);
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
    std::shared_ptr<DeviceConnection> connection = CameraTaskFactory::takeConnection(*record);
    connection->close();
    if (grabbing) {
        d->m_pThread->post([connection = std::move(connection)]() mutable {
            dropConnection(std::move(connection), true);
        });
    } else {
        dropConnection(std::move(connection), false);
    }
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

void CameraHost::setPromptSuppressed(long int cameraId, bool suppressed)
{
    if (const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().find(cameraId)) {
        record->m_bPromptSuppressed = suppressed;
    }
}
