#include "host/simulator/DeviceCore.h"

#include "host/simulator/sfnc/DeviceFiles.h"

#include <QThread>

#include <arv.h>
#include <chrono>
#include <cstring>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

/// Sleeps most of the time and spins the rest: a sleep alone overshoots by the timer's slack, about 60 us.
void waitExactly(std::chrono::microseconds duration)
{
    constexpr std::chrono::microseconds kSpin(80);
    const Clock::time_point end = Clock::now() + duration;
    if (duration > kSpin) {
        std::this_thread::sleep_until(end - kSpin);
    }
    while (Clock::now() < end) {
        std::this_thread::yield();
    }
}

} // namespace

DeviceCore::DeviceCore(QByteArray description, std::unique_ptr<RegisterMemory> memory,
                       std::unique_ptr<DeviceBehaviour> behaviour)
    : m_description(std::move(description))
    , m_pMemory(std::move(memory))
    , m_pBehaviour(std::move(behaviour))
{
}

QByteArray DeviceCore::peek(quint64 address, quint32 length) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pMemory->covers(address, length) ? m_pMemory->read(address, length) : QByteArray();
}

void DeviceCore::poke(quint64 address, const QByteArray &bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_pMemory->covers(address, quint32(bytes.size()))) {
        m_pMemory->write(address, bytes);
    }
}

void DeviceCore::setLatency(int microseconds)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nLatency = microseconds;
}

void DeviceCore::setFailing(quint64 address, int arvDeviceError)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (arvDeviceError) {
        m_failing.insert(address, arvDeviceError);
    } else {
        m_failing.remove(address);
    }
}

void DeviceCore::setAlignedOnly(bool on)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bAlignedOnly = on;
}

void DeviceCore::blockNextAccess()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_eBlock = BlockState::Armed;
}

void DeviceCore::unblock()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_eBlock = BlockState::None;
    m_unblocked.notify_all();
}

void DeviceCore::vanish()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bGone = true;
}

void DeviceCore::comeBack()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bGone = false;
}

void DeviceCore::vanishAfter(int accesses)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nAccessesLeft = accesses;
}

QByteArray DeviceCore::file(const QString &entry) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const DeviceFiles *files = m_pBehaviour->files();
    return files ? files->content(entry) : QByteArray();
}

void DeviceCore::setFile(const QString &entry, const QByteArray &content)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (DeviceFiles *files = m_pBehaviour->files()) {
        files->setContent(entry, content);
    }
}

void DeviceCore::setFileFault(const SimulatedFileFault &fault)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (DeviceFiles *files = m_pBehaviour->files()) {
        files->setFault(fault);
    }
}

void DeviceCore::loseControl()
{
    QMap<int, std::function<void()>> handles;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        handles = m_handles;
    }
    for (const auto &onControlLost : qAsConst(handles)) {
        onControlLost();
    }
}

void DeviceCore::setControlledElsewhere(bool on)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bControlledElsewhere = on;
    }
    if (on) {
        loseControl();
    }
}

bool DeviceCore::isControlledElsewhere() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bControlledElsewhere;
}

void DeviceCore::setLogging(bool on)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bLogging = on;
}

QVector<SimulatorAccess> DeviceCore::accessLog() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    // Not shared with the device's thread, which would append to it while the caller still looks at it.
    QVector<SimulatorAccess> copy = m_log;
    copy.detach();
    return copy;
}

void DeviceCore::clearAccessLog()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_log.clear();
    ++m_nLogGeneration;
}

void DeviceCore::setQuiet(bool on)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pBehaviour->setQuiet(on);
}

void DeviceCore::setRestartTime(int milliseconds)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nRestartTime = milliseconds;
}

int DeviceCore::read(quint64 address, quint32 length, void *buffer)
{
    quint64 generation = 0;
    const int line = arrive(SimulatorAccess::Read, address, length, &generation);
    const std::lock_guard<std::mutex> lock(m_mutex);
    const int error = failure(address, length);
    if (error >= 0) {
        noteFailure(line, generation);
        return error;
    }
    m_pBehaviour->beforeRead(*m_pMemory, address, length);
    const QByteArray bytes = m_pMemory->read(address, length);
    std::memcpy(buffer, bytes.constData(), size_t(bytes.size()));
    return -1;
}

int DeviceCore::write(quint64 address, quint32 length, const void *buffer)
{
    quint64 generation = 0;
    const int line = arrive(SimulatorAccess::Write, address, length, &generation);
    const std::lock_guard<std::mutex> lock(m_mutex);
    int error = failure(address, length);
    const QByteArray bytes(static_cast<const char *>(buffer), int(length));
    if (error < 0 && m_bControlledElsewhere) {
        error = ARV_DEVICE_ERROR_NOT_CONTROLLER;
    }
    if (error < 0) {
        error = m_pBehaviour->refusal(*m_pMemory, address, bytes);
    }
    if (error >= 0) {
        noteFailure(line, generation);
        return error;
    }
    m_pMemory->write(address, bytes);
    if (m_pBehaviour->afterWrite(*m_pMemory, address, length) == DeviceBehaviour::Effect::Restart) {
        restart();
    }
    return -1;
}

bool DeviceCore::isGone() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bGone;
}

int DeviceCore::addHandle(std::function<void()> onControlLost)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_handles.insert(++m_nNextHandle, std::move(onControlLost));
    return m_nNextHandle;
}

void DeviceCore::removeHandle(int handle)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_handles.remove(handle);
}

int DeviceCore::arrive(SimulatorAccess::Kind kind, quint64 address, quint32 length,
                       quint64 *logGeneration)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    int line = -1;
    if (m_bLogging) {
        line = m_log.size();
        m_log.append({kind, address, length, false, quintptr(QThread::currentThreadId())});
    }
    *logGeneration = m_nLogGeneration;
    const int latency = m_nLatency;
    if (m_nAccessesLeft == 0) {
        m_bGone = true;
    }
    m_nAccessesLeft = qMax(m_nAccessesLeft - 1, -1);
    if (m_eBlock == BlockState::Armed) {
        m_eBlock = BlockState::Waiting;
        m_unblocked.wait(lock, [this] { return m_eBlock != BlockState::Waiting; });
    }
    lock.unlock();
    if (latency > 0) {
        waitExactly(std::chrono::microseconds(latency));
    }
    return line;
}

int DeviceCore::failure(quint64 address, quint32 length) const
{
    if (m_bGone) {
        return ARV_DEVICE_ERROR_NOT_CONNECTED;
    }
    const auto fault = m_failing.lowerBound(address);
    if (fault != m_failing.constEnd() && fault.key() - address < length) {
        return *fault;
    }
    if (m_bAlignedOnly && address % 4 != 0) {
        return ARV_DEVICE_ERROR_PROTOCOL_ERROR_BAD_ALIGNMENT;
    }
    return m_pMemory->covers(address, length)
        ? -1
        : int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS);
}

void DeviceCore::noteFailure(int logLine, quint64 logGeneration)
{
    if (logLine >= 0 && logGeneration == m_nLogGeneration) {
        m_log[logLine].failed = true;
    }
}

void DeviceCore::restart()
{
    m_bGone = true;
    const std::chrono::milliseconds restartTime(m_nRestartTime);
    const std::weak_ptr<DeviceCore> self = weak_from_this();
    // A client notices the loss by its heartbeat, some time before the device is back.
    m_actions.run(restartTime / 4, [self] {
        if (const auto core = self.lock()) {
            core->loseControl();
        }
    });
    m_actions.run(restartTime, [self] {
        if (const auto core = self.lock()) {
            const std::lock_guard<std::mutex> lock(core->m_mutex);
            core->m_pBehaviour->restart(*core->m_pMemory);
            core->m_bGone = false;
        }
    });
}
