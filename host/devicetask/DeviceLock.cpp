#include "host/devicetask/DeviceLock.h"

#include <chrono>

bool DeviceLock::lock(const std::function<bool()> &giveUp)
{
    // The releasing flag is a plain atomic that anyone may set without a wake().
    constexpr std::chrono::milliseconds ASK_AGAIN(20);

    std::unique_lock<std::mutex> guard(m_mutex);
    const std::thread::id self = std::this_thread::get_id();
    while (m_nDepth > 0 && m_owner != self) {
        if (giveUp()) {
            return false;
        }
        m_condition.wait_for(guard, ASK_AGAIN);
    }
    if (giveUp()) {
        return false;
    }
    m_owner = self;
    ++m_nDepth;
    return true;
}

void DeviceLock::unlock()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (--m_nDepth == 0) {
        m_owner = {};
        m_condition.notify_one();
    }
}

void DeviceLock::wake()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_condition.notify_all();
}
