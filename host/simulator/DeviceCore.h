#pragma once

#include "host/simulator/DelayedActions.h"
#include "host/simulator/DeviceBehaviour.h"
#include "host/simulator/SimulatedDevices.h"

#include <QMap>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

/// A simulated device behind its handles: memory, behaviour, faults and log. Any thread.
class DeviceCore : public SimulatorControl, public std::enable_shared_from_this<DeviceCore>
{
public:
    DeviceCore(QByteArray description, std::unique_ptr<RegisterMemory> memory,
               std::unique_ptr<DeviceBehaviour> behaviour);

    QByteArray peek(quint64 address, quint32 length) const override;
    void poke(quint64 address, const QByteArray &bytes) override;
    QByteArray description() const override { return m_description; }
    void setLatency(int microseconds) override;
    void setFailing(quint64 address, int arvDeviceError) override;
    void setAlignedOnly(bool on) override;
    void blockNextAccess() override;
    void unblock() override;
    void vanish() override;
    void comeBack() override;
    void loseControl() override;
    void setControlledElsewhere(bool on) override;
    void vanishAfter(int accesses) override;
    QByteArray file(const QString &entry) const override;
    void setFile(const QString &entry, const QByteArray &content) override;
    void setFileFault(const SimulatedFileFault &fault) override;
    void setLogging(bool on) override;
    QVector<SimulatorAccess> accessLog() const override;
    void clearAccessLog() override;
    void setQuiet(bool on) override;
    void setRestartTime(int milliseconds) override;

    /// An access from a handle; -1 or the ArvDeviceError that it fails with.
    int read(quint64 address, quint32 length, void *buffer);
    int write(quint64 address, quint32 length, const void *buffer);
    bool isGone() const;
    bool isControlledElsewhere() const;

    /// Called by loseControl() for each handle that lives, on the thread of the caller. The number names it.
    int addHandle(std::function<void()> onControlLost);
    void removeHandle(int handle);

private:
    enum class BlockState { None, Armed, Waiting };

    /// Latency and blocking, with no lock held; returns the position of the log line.
    int arrive(SimulatorAccess::Kind kind, quint64 address, quint32 length, quint64 *logGeneration);
    int failure(quint64 address, quint32 length) const;
    void noteFailure(int logLine, quint64 logGeneration);
    void restart();

    const QByteArray m_description;
    mutable std::mutex m_mutex; ///< everything below but the delayed actions
    std::condition_variable m_unblocked;
    std::unique_ptr<RegisterMemory> m_pMemory;
    std::unique_ptr<DeviceBehaviour> m_pBehaviour;
    QMap<quint64, int> m_failing;
    QMap<int, std::function<void()>> m_handles;
    QVector<SimulatorAccess> m_log;
    quint64 m_nLogGeneration =
        0; ///< lines of a log that was cleared meanwhile are not touched again
    BlockState m_eBlock = BlockState::None;
    int m_nLatency = 0;
    int m_nRestartTime = 2000;
    int m_nNextHandle = 0;
    bool m_bAlignedOnly = false;
    bool m_bLogging = false;
    bool m_bGone = false;
    int m_nAccessesLeft = -1; ///< until the device vanishes; -1: it stays
    bool m_bControlledElsewhere = false;
    DelayedActions m_actions; ///< last: its thread ends before the rest goes
};
