#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

/// The library's own thread: it passes on what the module asks for and takes apart connections that a call was still
/// inside of when their camera was closed. Lives as long as the CameraHost.
class OperateThread
{
public:
    using Job = std::function<void()>;
    using CloseNotice = std::function<void(long int cameraId, bool lost)>;

    /// `notice` runs on this thread.
    explicit OperateThread(CloseNotice notice);
    /// Runs what is queued, then ends the thread.
    ~OperateThread();
    OperateThread(const OperateThread &) = delete;
    OperateThread &operator=(const OperateThread &) = delete;

    void post(Job job);
    /// Tells the client that the module wants this camera closed.
    void requestClose(long int cameraId, bool lost);
    /// Waits until the queue is empty and nothing runs, for at most that long.
    void waitIdle(int milliseconds);

    /// The thread of the process or null; `set` makes it known and takes it away.
    static std::shared_ptr<OperateThread> current();
    static void setCurrent(std::shared_ptr<OperateThread> thread);

private:
    void run();

    const CloseNotice m_closeNotice;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    bool m_bRunning = false; ///< a job is running
    bool m_bStop = false;
    std::thread m_thread;
};
