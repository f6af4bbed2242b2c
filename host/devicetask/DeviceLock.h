#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/// The recursive lock of one device. Unlike a mutex it lets a waiting thread give up, so that closing a camera does
/// not leave readers behind a call that hangs in the device.
class DeviceLock
{
public:
    /// Waits for the lock; false as soon as `giveUp` answers true. `giveUp` runs under an inner mutex: it only
    /// reads flags.
    bool lock(const std::function<bool()> &giveUp);
    void unlock();
    /// Lets the waiting threads ask their `giveUp` at once.
    void wake();

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    std::thread::id m_owner;
    int m_nDepth = 0;
};
