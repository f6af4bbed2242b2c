#pragma once

#include <QByteArray>
#include <QHash>

#include <arv.h>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

/// What stands behind one MemoryDevice: a description, flat memory and the faults that a test asks for. It outlives
/// the device. Any thread.
class MemoryDeviceState
{
public:
    explicit MemoryDeviceState(const QByteArray &xml, int size = 0x4000)
        : m_xml(xml)
        , m_memory(size, '\0')
    {
    }

    const QByteArray m_xml;
    std::atomic<int> m_nAccesses{0};
    std::atomic<int> m_nLiving{0}; ///< devices that stand on this state now

    QByteArray peek(int address, int length) const;
    void poke(int address, const QByteArray &bytes);
    /// Accesses that touch this address fail with an ArvDeviceError from now on; -1 takes the fault away.
    void setFailing(int address, int deviceError);
    /// Every access fails with this ArvDeviceError; -1 takes the fault away.
    void setGone(int deviceError);
    /// Accesses wait in the device from now on, until unblock().
    void block();
    void unblock();
    /// Waits until an access hangs in the device; false after 5 s.
    bool waitForBlocked();

    bool access(quint64 address, quint32 size, void *read, const void *write, GError **error);

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_condition;
    QByteArray m_memory;
    QHash<int, int> m_failing;
    int m_nGone = -1;
    bool m_bBlocked = false;
    int m_nWaiting = 0;
};

/// An ArvDevice of the tests' own on such a state; the caller owns it.
ArvDevice *newMemoryDevice(const std::shared_ptr<MemoryDeviceState> &state);
