#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>

class QIODevice;

/// How far the transfer of a task is, in bytes. Any thread; nothing is locked.
struct FileProgress
{
    std::atomic<bool> isBusy{false};
    std::atomic<qint64> total{-1}; ///< -1 while it is not known
    std::atomic<qint64> done{0};
};

/// One copy between a file of the device and a file of the host, block by block on the caller's thread. Between two
/// blocks other callers get their turn at the device. A failure leaves the host's file as it was, and the device's
/// closed.
class FileTransfer
{
public:
    using Work = std::function<DeviceError(const DeviceSession &)>;
    /// Has the work done on the connection's thread and waits for it; it owns what it touches, since the wait may end
    /// before.
    using Performer = std::function<DeviceError(const Work &)>;

    FileTransfer(Performer perform, FileProgress &progress);
    ~FileTransfer();

    /// `entry` names the device's file, an entry of FileSelector. The host's file appears when all of it has come.
    DeviceError fetch(const QByteArray &entry, const QString &path);
    /// Refuses an empty file, and one that the device has no room for.
    DeviceError send(const QString &path, const QByteArray &entry);

private:
    struct State;

    DeviceError fetchBlocks(QIODevice &target);
    DeviceError sendBlocks(QIODevice &source, qint64 size);
    DeviceError onDevice(const std::function<DeviceError(State &, const DeviceSession &)> &work);
    DeviceError closed(const DeviceError &error);

    const Performer m_perform;
    FileProgress &m_progress;
    std::shared_ptr<State> m_pState;
};
