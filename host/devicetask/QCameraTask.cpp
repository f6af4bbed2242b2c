#include "DeviceTaskModule/QCameraTask.h"

#include "host/devicetask/AccessMode.h"
#include "host/devicetask/GErrorBox.h"
#include "host/devicetask/NodeReader.h"
#include "host/devicetask/NodeWriter.h"
#include "host/devicetask/QCameraTaskPrivate.h"
#include "host/devicetask/TaskRecord.h"
#include "host/devicetask/TaskRing.h"

#include <QDomDocument>
#include <QLoggingCategory>

#include <algorithm>
#include <cstring>

Q_LOGGING_CATEGORY(lcTask, "vexa.devicetask.task", QtInfoMsg)

namespace {

/// Longest memory range that one operation moves, in bytes.
constexpr qint64 MAX_MEMORY = 64 * 1024 * 1024;
/// Payload of one GVCP READMEM or WRITEMEM; no transport takes less.
constexpr qint64 MEMORY_BLOCK = 512;

DeviceError notYet(const char *what)
{
    return {NODE_RUNTIME,
            QStringLiteral("%1 is not offered by this device layer").arg(QLatin1String(what))};
}

DeviceError noPlace()
{
    return {NODE_ARGUMENT, QStringLiteral("there is no place for the value")};
}

DeviceError checkMemory(qint64 address, const void *buffer, qint64 length)
{
    if (address < 0 || length < 0 || length > MAX_MEMORY || (!buffer && length > 0)) {
        return {NODE_ARGUMENT, QStringLiteral("%1 bytes at address %2").arg(length).arg(address)};
    }
    return {};
}

QString memoryName(qint64 address)
{
    return QStringLiteral("address 0x%1").arg(address, 0, 16);
}

} // namespace

QCameraTask::Private::Private(TaskRecord *record,
                              const std::shared_ptr<DeviceConnection> &connection)
    : m_pRecord(record)
    , m_pConnection(connection)
{
}

std::shared_ptr<DeviceConnection> QCameraTask::Private::connection() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_pConnection;
}

std::shared_ptr<DeviceConnection> QCameraTask::Private::takeConnection()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return std::move(m_pConnection);
}

DeviceError QCameraTask::Private::closed()
{
    return {DEVICE_GONE, QStringLiteral("the camera is closed")};
}

std::shared_ptr<TaskRecord> QCameraTask::Private::enter() const
{
    std::shared_ptr<TaskRecord> record = m_pRecord->shared_from_this();
    TaskRing::ofThread().touch(record);
    return record;
}

bool QCameraTask::Private::finish(const DeviceError &result, int *error) const
{
    if (error) {
        *error = result.code();
    }
    if (result.failed()) {
        TaskRing::ofThread().setLastError(m_pRecord->m_nId, result);
        qCDebug(lcTask, "Camera %ld: %s", m_pRecord->m_nId, qUtf8Printable(result.remark()));
    }
    return !result.failed();
}

bool QCameraTask::Private::fail(const DeviceError &failure, int *error)
{
    const std::shared_ptr<TaskRecord> keep = enter();
    return finish(failure, error);
}

QCameraTask::QCameraTask(std::unique_ptr<Private> data)
    : d(std::move(data))
{
}

QCameraTask::~QCameraTask() = default;

void QCameraTask::GetXMLDomDocument(QDomDocument &document)
{
    const std::shared_ptr<TaskRecord> keep = d->enter();
    const std::shared_ptr<DeviceConnection> connection = d->connection();
    // Parsed anew for each caller: handles of one document must not be used on two threads.
    QDomDocument parsed;
    if (!connection || !parsed.setContent(connection->description(), false)) {
        parsed = QDomDocument();
        d->finish(Private::closed(), nullptr);
    }
    document = parsed;
}

int QCameraTask::ClearGenIcamBuffers()
{
    // Nothing is kept between two reads; a closed task says so.
    int error = 0;
    d->access(*this, &error, [](const GcSession &) { return DeviceError(); });
    return error;
}

bool QCameraTask::InvalidateNode(QString name)
{
    return d->access(*this, nullptr, [node = name.toUtf8()](const GcSession &session) {
        return session.index.find(node)
            ? DeviceError()
            : DeviceError(NODE_PROPERTY, QStringLiteral("there is no such node"));
    });
}

QString QCameraTask::GetCameraName()
{
    return d->m_pRecord->name();
}

void QCameraTask::SetCameraName(const QString &name)
{
    d->m_pRecord->setName(name);
}

_TASK_CAMERA_STATE_ QCameraTask::GetCameraState()
{
    return static_cast<_TASK_CAMERA_STATE_>(d->m_pRecord->m_nState.load());
}

QString QCameraTask::GetLastErrorRemark()
{
    return TaskRing::ofThread().lastRemark(d->m_pRecord->m_nId);
}

unsigned int QCameraTask::GetOptimalPacketSize()
{
    return d->m_pRecord->m_nOptimalPacketSize;
}

bool QCameraTask::IsOtherCamera()
{
    return d->m_pRecord->m_bForeign;
}

void QCameraTask::SetTriggerMode(int mode)
{
    d->m_pRecord->m_nTriggerMode = mode;
}

unsigned int QCameraTask::channelCount()
{
    return 1;
}

QChannelTask *QCameraTask::getChannelTaskById(unsigned int &channel)
{
    return channel == 0 ? &d->m_pRecord->m_channel : nullptr;
}

unsigned int QCameraTask::deviceType()
{
    return d->m_pRecord->m_nDeviceType;
}

int QCameraTask::GetTaskCameraID()
{
    return static_cast<int>(d->m_pRecord->m_nId);
}

bool QCameraTask::IsPromptSuppressed()
{
    return d->m_pRecord->m_bPromptSuppressed;
}

int QCameraTask::LoadFeatures(const QString &)
{
    int error = 0;
    d->fail(notYet("loading features through the task"), &error);
    return error;
}

int QCameraTask::SaveFeatures(const QString &)
{
    int error = 0;
    d->fail(notYet("saving features through the task"), &error);
    return error;
}

int QCameraTask::ReadDeviceFile(const QString &, const QString &)
{
    int error = 0;
    d->fail(notYet("reading a device file"), &error);
    return error;
}

int QCameraTask::WriteDeviceFile(const QString &, const QString &)
{
    int error = 0;
    d->fail(notYet("writing a device file"), &error);
    return error;
}

int QCameraTask::GetFileAccessProgress(qint64 *, qint64 *)
{
    // No transfer is ever under way, so the caller's presets stand.
    return 0;
}

bool QCameraTask::GetIntegerValue(const QString &name, _NODE_INT_VALUE_ *out, int *error, bool,
                                  bool)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return out ? NodeReader::integer(session, name.toUtf8(), out) : noPlace();
    });
}

bool QCameraTask::GetFloatValue(const QString &name, _NODE_FLOAT_VALUE_ *out, int *error, bool,
                                bool)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return out ? NodeReader::floating(session, name.toUtf8(), out) : noPlace();
    });
}

bool QCameraTask::GetEnumerationValue(const QString &name, _NODE_ENUM_VALUE_ *out, int *error, bool,
                                      bool)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return out ? NodeReader::enumeration(session, name.toUtf8(), out) : noPlace();
    });
}

bool QCameraTask::GetBooleanValue(const QString &name, bool *out, int *error, bool, bool)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return out ? NodeReader::boolean(session, name.toUtf8(), out) : noPlace();
    });
}

bool QCameraTask::GetStringValue(const QString &name, QString *out, qint64 *maxLength, int *error,
                                 bool, bool)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return out ? NodeReader::string(session, name.toUtf8(), out, maxLength) : noPlace();
    });
}

bool QCameraTask::ReadMemory(const qint64 &address, void *buffer, qint64 length, int *error)
{
    const DeviceError refusal = checkMemory(address, buffer, length);
    if (refusal.failed()) {
        return d->fail(refusal, error);
    }
    const qint64 start = address;
    QByteArray bytes(static_cast<int>(length), '\0');
    qint64 done = 0;
    // The lock is given back between two blocks, so that a long range holds nobody up.
    do {
        const auto size = static_cast<guint32>(std::min(length - done, MEMORY_BLOCK));
        const bool ok = d->access(*this, error, [&](const GcSession &session) {
            GErrorBox box;
            if (size > 0) {
                arv_device_read_memory(session.device, static_cast<guint64>(start + done), size,
                                       bytes.data() + done, box.next());
            }
            return box.error(memoryName(start + done));
        });
        if (!ok) {
            return false;
        }
        done += size;
    } while (done < length);
    if (length > 0) {
        std::memcpy(buffer, bytes.constData(), static_cast<std::size_t>(length));
    }
    return true;
}

bool QCameraTask::WriteMemory(const qint64 &address, const void *buffer, qint64 length, int *error)
{
    const DeviceError refusal = checkMemory(address, buffer, length);
    if (refusal.failed()) {
        return d->fail(refusal, error);
    }
    const qint64 start = address;
    QByteArray bytes(static_cast<const char *>(buffer), static_cast<int>(length));
    qint64 done = 0;
    do {
        const auto size = static_cast<guint32>(std::min(length - done, MEMORY_BLOCK));
        const bool ok = d->access(*this, error, [&](const GcSession &session) {
            GErrorBox box;
            if (size > 0) {
                arv_device_write_memory(session.device, static_cast<guint64>(start + done), size,
                                        bytes.data() + done, box.next());
            }
            return box.error(memoryName(start + done));
        });
        if (!ok) {
            return false;
        }
        done += size;
    } while (done < length);
    return true;
}

bool QCameraTask::SetIntegerValue(const QString &name, qint64 value, int *error)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return NodeWriter::integer(session, name.toUtf8(), value);
    });
}

bool QCameraTask::ExecuteCommand(const QString &name, int *error)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return NodeWriter::execute(session, name.toUtf8());
    });
}

bool QCameraTask::SetFloatValue(const QString &name, float value, int *error)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return NodeWriter::floating(session, name.toUtf8(), value);
    });
}

bool QCameraTask::SetEnumerationValue(const QString &name, quint32 value, int *error)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return NodeWriter::enumeration(session, name.toUtf8(), value);
    });
}

bool QCameraTask::SetBooleanValue(const QString &name, bool value, int *error)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return NodeWriter::boolean(session, name.toUtf8(), value);
    });
}

bool QCameraTask::SetStringValue(const QString &name, const QString &value, int *error)
{
    return d->access(*this, error, [&](const GcSession &session) {
        return NodeWriter::string(session, name.toUtf8(), value.toUtf8());
    });
}

int QCameraTask::GetAccessMode(const QString &name, int *error)
{
    const std::shared_ptr<TaskRecord> keep = d->enter();
    const std::shared_ptr<DeviceConnection> connection = d->connection();
    const QByteArray node = name.toUtf8();
    int mode = NODE_NA;
    DeviceError result = Private::closed();
    if (connection) {
        result = connection->run(m_bReleasing, [&](const GcSession &session) {
            return AccessMode::of(session, node, &mode);
        });
        if (result.failed()) {
            mode = connection->lastAccessMode(node);
        } else {
            connection->keepAccessMode(node, mode);
        }
    }
    d->finish(result, error);
    return mode;
}
