#include "host/devicetask/FileTransfer.h"

#include "host/devicetask/FileAccess.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>

namespace {

/// No file of a device is longer; one that has no size and does not end must not fill the host's disk.
constexpr qint64 LARGEST_FILE = 1LL << 32;

DeviceError hostFailure(const QFileDevice &file)
{
    return {NODE_ARGUMENT, QStringLiteral("%1: %2").arg(file.fileName(), file.errorString())};
}

DeviceError hostFailure(const QString &path, const char *reason)
{
    return {NODE_ARGUMENT, QStringLiteral("%1: %2").arg(path, QLatin1String(reason))};
}

} // namespace

/// What the work of this transfer touches on the connection's thread; it outlives a caller that has given up, who then
/// touches nothing but `stop`.
struct FileTransfer::State
{
    explicit State(const QByteArray &entry)
        : access(entry, stop)
    {
    }
    std::atomic<bool> stop{false};
    FileAccess access;
    QByteArray bytes;
    qint64 written = 0;
};

FileTransfer::FileTransfer(Performer perform, FileProgress &progress)
    : m_perform(std::move(perform))
    , m_progress(progress)
{
}

FileTransfer::~FileTransfer()
{
    m_progress.total = -1;
    m_progress.done = 0;
}

DeviceError FileTransfer::onDevice(
    const std::function<DeviceError(State &, const DeviceSession &)> &work)
{
    const DeviceError error =
        m_perform([state = m_pState, work](const DeviceSession &session) -> DeviceError {
            return work(*state, session);
        });
    if (error.isTransport()) {
        m_pState->stop = true;
    }
    return error;
}

DeviceError FileTransfer::closed(const DeviceError &error)
{
    if (m_pState->stop) {
        // What hangs in the device may still be using the state.
        return error;
    }
    const DeviceError atClose = onDevice(
        [](State &state, const DeviceSession &session) { return state.access.close(session); });
    return error.failed() ? error : atClose;
}

DeviceError FileTransfer::fetch(const QByteArray &entry, const QString &path)
{
    // Written beside and renamed.
    QSaveFile target(path);
    if (!target.open(QIODevice::WriteOnly)) {
        return hostFailure(target);
    }
    m_pState = std::make_shared<State>(entry);
    DeviceError error = onDevice([](State &state, const DeviceSession &session) {
        return state.access.openToRead(session);
    });
    if (error.failed()) {
        return error;
    }
    error = closed(fetchBlocks(target));
    return error.failed() || target.commit() ? error : hostFailure(target);
}

DeviceError FileTransfer::fetchBlocks(QIODevice &target)
{
    const qint64 size = m_pState->access.size();
    const int block = m_pState->access.blockSize();
    m_progress.total = size;
    qint64 done = 0;
    // A size that is a number of blocks is checked by asking for one more.
    while (size == FileAccess::SIZE_UNKNOWN || done < size || size % block == 0) {
        const DeviceError error = onDevice([done](State &state, const DeviceSession &session) {
            return state.access.read(session, done, &state.bytes);
        });
        if (done == size && !error.isTransport() && (error.failed() || m_pState->bytes.isEmpty())) {
            return {};
        }
        if (error.failed()) {
            return error;
        }
        const QByteArray bytes = m_pState->bytes;
        if (target.write(bytes) != bytes.size()) {
            return hostFailure(static_cast<QFileDevice &>(target));
        }
        done += bytes.size();
        m_progress.done = done;
        if (size == FileAccess::SIZE_UNKNOWN && bytes.size() < block) {
            return {};
        }
        if (done > LARGEST_FILE) {
            return {NODE_LOGICAL, QStringLiteral("the device's file does not end")};
        }
        if (size != FileAccess::SIZE_UNKNOWN && (bytes.isEmpty() || done > size)) {
            return {NODE_LOGICAL,
                    QStringLiteral("the device's file of %1 bytes %2 byte %3")
                        .arg(size)
                        .arg(QLatin1String(bytes.isEmpty() ? "ends at" : "goes on to"))
                        .arg(done)};
        }
    }
    return {};
}

DeviceError FileTransfer::send(const QString &path, const QByteArray &entry)
{
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly)) {
        return hostFailure(source);
    }
    const qint64 size = source.size();
    if (source.isSequential() || size == 0) {
        return hostFailure(path, size == 0 ? "the file is empty" : "this is no file");
    }
    m_pState = std::make_shared<State>(entry);
    const DeviceError error = onDevice([size](State &state, const DeviceSession &session) {
        return state.access.openToWrite(session, size);
    });
    return error.failed() ? error : closed(sendBlocks(source, size));
}

DeviceError FileTransfer::sendBlocks(QIODevice &source, qint64 size)
{
    m_progress.total = size;
    QByteArray left;
    qint64 done = 0;
    while (done < size) {
        const qint64 room = m_pState->access.blockSize() - left.size();
        left += source.read(std::min(room, size - done - left.size()));
        if (left.isEmpty()) {
            return hostFailure(static_cast<QFileDevice &>(source));
        }
        m_pState->bytes = left;
        const DeviceError error = onDevice([done](State &state, const DeviceSession &session) {
            return state.access.write(session, done, state.bytes, &state.written);
        });
        if (error.failed()) {
            return error;
        }
        left.remove(0, static_cast<int>(m_pState->written));
        done += m_pState->written;
        m_progress.done = done;
    }
    return {};
}
