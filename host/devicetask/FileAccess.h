#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"

#include <QByteArray>

#include <atomic>

/// Operations on one file of a device by the nodes of GenICam file access (SFNC FileAccessControl). Each is one piece
/// of work for the connection's thread, so that no other access comes in between. Out arguments are filled only on
/// success.
///
/// A file goes by its entry of FileSelector and nothing else: the name never becomes a path.
class FileAccess
{
public:
    static constexpr qint64 SIZE_UNKNOWN = -1;

    /// `stop` ends the wait for a slow operation; it has to live as long as this.
    FileAccess(const QByteArray &entry, const std::atomic<bool> &stop)
        : m_entry(entry)
        , m_stop(stop)
    {
    }

    /// One that was left open by somebody is closed first.
    DeviceError openToRead(const DeviceSession &session);
    /// Empties the file. Fails for a `size` that the device does not take.
    DeviceError openToWrite(const DeviceSession &session, qint64 size);
    /// At most one block from `offset` on; empty at the end of the file.
    DeviceError read(const DeviceSession &session, qint64 offset, QByteArray *bytes);
    /// `written` is how many of the bytes the device took, at least 1. `bytes` has at most one block.
    DeviceError write(const DeviceSession &session, qint64 offset, const QByteArray &bytes,
                      qint64 *written);
    DeviceError close(const DeviceSession &session);

    /// Of the open file, in bytes; SIZE_UNKNOWN when the device does not tell.
    qint64 size() const { return m_nSize; }
    /// Bytes that one operation moves.
    int blockSize() const { return m_nBlock; }

private:
    class Operation;

    DeviceError open(const DeviceSession &session, const char *mode, qint64 size);
    DeviceError learn(Operation &operation, qint64 size);

    const QByteArray m_entry;
    const std::atomic<bool> &m_stop;
    qint64 m_nEntry = 0; ///< the entry's value
    qint64 m_nSelectedBefore = 0;
    qint64 m_nSize = SIZE_UNKNOWN;
    int m_nBlock = 0;
    bool m_bTellsWhenDone = false;
    bool m_bOpen = false;
    quint64 m_nChanges = 0; ///< DeviceSession::changes of the last operation, 0 for none
    QByteArray m_selected; ///< what FileOperationSelector stands on since then
};
