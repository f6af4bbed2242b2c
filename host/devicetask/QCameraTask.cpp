#include "DeviceTaskModule/QCameraTask.h"

#include "host/devicetask/CameraTaskFactory.h"
#include "host/devicetask/QCameraTaskPrivate.h"
#include "host/devicetask/TaskRecord.h"
#include "host/devicetask/TaskRing.h"
#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeReader.h"
#include "host/devicetask/nodes/NodeWriter.h"
#include "host/devicetask/nodes/RegisterMemory.h"

#include <QDomDocument>
#include <QLoggingCategory>

#include <algorithm>
#include <cstring>

using Question = HeldValues::Question;

Q_LOGGING_CATEGORY(lcTask, "vexa.devicetask.task", QtInfoMsg)

namespace {

/// Longest memory range that one operation moves, in bytes.
constexpr qint64 MAX_MEMORY = 64 * 1024 * 1024;

DeviceError notYet(const char *what)
{
    return {NODE_RUNTIME,
            QStringLiteral("%1 is not offered by this device layer").arg(QLatin1String(what))};
}

DeviceError checkMemory(qint64 address, const void *buffer, qint64 length)
{
    if (address < 0 || length < 0 || length > MAX_MEMORY || (!buffer && length > 0)) {
        return {NODE_ARGUMENT, QStringLiteral("%1 bytes at address %2").arg(length).arg(address)};
    }
    return {};
}

/// Commands after which nothing of a device is as it was shown: SFNC's own and those of code readers.
bool isRestart(const QString &command)
{
    static const char *const COMMANDS[] = {"DeviceReset", "DeviceFactoryReset", "RecoverFactory"};
    return std::any_of(std::begin(COMMANDS), std::end(COMMANDS),
                       [&command](const char *name) { return command == QLatin1String(name); });
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

std::shared_ptr<DeviceConnection> QCameraTask::Private::exchangeConnection(
    std::shared_ptr<DeviceConnection> connection)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_pConnection.swap(connection);
    return connection;
}

DeviceError QCameraTask::Private::closed()
{
    return {DEVICE_GONE, QStringLiteral("the camera is closed")};
}

void QCameraTask::Private::observe()
{
    if (void (*const observer)() = CameraTaskFactory::registry().m_pCallObserver) {
        observer();
    }
}

DeviceError QCameraTask::Private::noPlace()
{
    return {NODE_ARGUMENT, QStringLiteral("there is no place for the value")};
}

DeviceError QCameraTask::Private::mayWrite() const
{
    return m_pRecord->m_nAccessMode == DEVICE_ACCESS_READ_ONLY
        ? DeviceError(NODE_NOT_ACCESSIBLE, QStringLiteral("another host controls the device"))
        : DeviceError();
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

int QCameraTask::Private::transfer(const QCameraTask &task,
                                   const std::function<DeviceError(FileTransfer &)> &run)
{
    const std::shared_ptr<TaskRecord> keep = enter();
    int code = 0;
    DeviceError error = mayWrite();
    if (!error.failed() && m_fileProgress.isBusy.exchange(true)) {
        finish({NODE_NOT_ACCESSIBLE, QStringLiteral("another file is on its way")}, &code);
        return code;
    }
    if (!error.failed()) {
        {
            FileTransfer transfer(
                [this, &task](const FileTransfer::Work &work) {
                    struct Nothing
                    {
                    } nothing;
                    return call(task, &nothing, [work](const DeviceSession &session, Nothing *) {
                        return work(session);
                    });
                },
                m_fileProgress);
            error = run(transfer);
        }
        m_fileProgress.isBusy = false;
    }
    finish(error, &code);
    return code;
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
    // Without a turn on the connection's thread: the GUI thread asks, and the device may hang.
    const std::shared_ptr<TaskRecord> keep = d->enter();
    const std::shared_ptr<DeviceConnection> device = d->connection();
    int error = 0;
    d->finish(device ? device->forgetHeld(m_bReleasing) : Private::closed(), &error);
    return error;
}

bool QCameraTask::InvalidateNode(QString name)
{
    bool known = false;
    return d->read(*this, nullptr, &known,
                   [node = name.toUtf8()](const DeviceSession &session, bool *) {
                       return session.nodes.find(node) != NO_NODE
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
    return d->m_pRecord->m_source.foreign;
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

int QCameraTask::ReadDeviceFile(const QString &path, const QString &fileName)
{
    return d->transfer(
        *this, [&](FileTransfer &transfer) { return transfer.fetch(fileName.toUtf8(), path); });
}

int QCameraTask::WriteDeviceFile(const QString &path, const QString &fileName)
{
    return d->transfer(
        *this, [&](FileTransfer &transfer) { return transfer.send(path, fileName.toUtf8()); });
}

int QCameraTask::GetFileAccessProgress(qint64 *total, qint64 *done)
{
    const FileProgress &progress = d->m_fileProgress;
    if (progress.isBusy && total && done) {
        *total = progress.total;
        *done = progress.done;
    }
    return 0;
}

bool QCameraTask::GetIntegerValue(const QString &name, _NODE_INT_VALUE_ *out, int *error, bool,
                                  bool)
{
    return d->read(*this, {Question::Integer, name.toUtf8()}, error, out, NodeReader::integer);
}

bool QCameraTask::GetFloatValue(const QString &name, _NODE_FLOAT_VALUE_ *out, int *error, bool,
                                bool)
{
    return d->read(*this, {Question::Value, name.toUtf8()}, error, out, NodeReader::floating);
}

bool QCameraTask::GetEnumerationValue(const QString &name, _NODE_ENUM_VALUE_ *out, int *error, bool,
                                      bool)
{
    // The record is much larger than what it holds, so the answer travels without it.
    EnumReading reading;
    const bool ok = d->read(*this, {Question::Value, name.toUtf8()}, error,
                            out ? &reading : nullptr, NodeReader::enumeration);
    if (ok) {
        constexpr int CAPACITY = sizeof(out->entries) / sizeof(out->entries[0]);
        const int count = std::min(reading.entries.size(), CAPACITY);
        out->value = reading.value;
        out->count = static_cast<quint32>(count);
        std::copy_n(reading.entries.cbegin(), count, out->entries);
    }
    return ok;
}

bool QCameraTask::GetBooleanValue(const QString &name, bool *out, int *error, bool, bool)
{
    return d->read(*this, {Question::Value, name.toUtf8()}, error, out, NodeReader::boolean);
}

bool QCameraTask::GetStringValue(const QString &name, QString *out, qint64 *maxLength, int *error,
                                 bool, bool)
{
    struct Text
    {
        QString value;
        qint64 maxLength = 0;
    } text;
    const bool ok =
        d->read(*this, {Question::Value, name.toUtf8()}, error, out ? &text : nullptr,
                [](const DeviceSession &session, const QByteArray &node, Text *read) {
                    return NodeReader::string(session, node, &read->value, &read->maxLength);
                });
    if (ok) {
        *out = text.value;
        if (maxLength) {
            *maxLength = text.maxLength;
        }
    }
    return ok;
}

bool QCameraTask::ReadMemory(const qint64 &address, void *buffer, qint64 length, int *error)
{
    const DeviceError refusal = checkMemory(address, buffer, length);
    if (refusal.failed()) {
        return d->fail(refusal, error);
    }
    const qint64 start = address;
    QByteArray bytes;
    bytes.reserve(static_cast<int>(length));
    // Other callers get their turn between two blocks, so that a long range holds nobody up.
    do {
        const qint64 from = start + bytes.size();
        const int size = std::min(static_cast<int>(length) - bytes.size(), RegisterMemory::BLOCK);
        QByteArray block;
        const bool ok = d->read(
            *this, error, &block, [from, size](const DeviceSession &session, QByteArray *read) {
                return RegisterMemory(session).read(static_cast<quint64>(from), size, false,
                                                    memoryName(from), read);
            });
        if (!ok) {
            return false;
        }
        bytes += block;
    } while (bytes.size() < length);
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
    const QByteArray bytes(static_cast<const char *>(buffer), static_cast<int>(length));
    qint64 done = 0;
    do {
        const qint64 to = address + done;
        const QByteArray block = bytes.mid(static_cast<int>(done), RegisterMemory::BLOCK);
        const bool ok = d->write(*this, error, [to, block](const DeviceSession &session) {
            return RegisterMemory(session).write(static_cast<quint64>(to), block, memoryName(to));
        });
        if (!ok) {
            return false;
        }
        done += block.size();
    } while (done < length);
    return true;
}

bool QCameraTask::SetIntegerValue(const QString &name, qint64 value, int *error)
{
    return d->write(*this, error, [node = name.toUtf8(), value](const DeviceSession &session) {
        return NodeWriter::integer(session, node, value);
    });
}

bool QCameraTask::ExecuteCommand(const QString &name, int *error)
{
    int code = 0;
    const bool ok = d->write(*this, &code, [node = name.toUtf8()](const DeviceSession &session) {
        return NodeWriter::execute(session, node);
    });
    // A device that restarts may be gone before its answer is sent.
    const bool reached = ok || code == DEVICE_TIMEOUT || code == DEVICE_TRANSPORT;
    if (reached && isRestart(name)) {
        d->m_pRecord->m_bRestarted = true;
    }
    if (error) {
        *error = code;
    }
    return ok;
}

bool QCameraTask::SetFloatValue(const QString &name, float value, int *error)
{
    return d->write(*this, error, [node = name.toUtf8(), value](const DeviceSession &session) {
        return NodeWriter::floating(session, node, value);
    });
}

bool QCameraTask::SetEnumerationValue(const QString &name, quint32 value, int *error)
{
    return d->write(*this, error, [node = name.toUtf8(), value](const DeviceSession &session) {
        return NodeWriter::enumeration(session, node, value);
    });
}

bool QCameraTask::SetBooleanValue(const QString &name, bool value, int *error)
{
    return d->write(*this, error, [node = name.toUtf8(), value](const DeviceSession &session) {
        return NodeWriter::boolean(session, node, value);
    });
}

bool QCameraTask::SetStringValue(const QString &name, const QString &value, int *error)
{
    return d->write(*this, error,
                    [node = name.toUtf8(), text = value.toUtf8()](const DeviceSession &session) {
                        return NodeWriter::string(session, node, text);
                    });
}

int QCameraTask::GetAccessMode(const QString &name, int *error)
{
    const std::shared_ptr<TaskRecord> keep = d->enter();
    const std::shared_ptr<DeviceConnection> connection = d->connection();
    const QByteArray node = name.toUtf8();
    int mode = NODE_NA;
    DeviceError result;
    if (!connection || !connection->fixedAccessMode(node, m_bReleasing, &mode)) {
        result = d->call(*this, {Question::AccessMode, node}, &mode, AccessMode::of);
        if (connection && result.failed()) {
            mode = connection->lastAccessMode(node);
        } else if (connection) {
            connection->keepAccessMode(node, mode);
        }
    }
    d->finish(result, error);
    return mode;
}
