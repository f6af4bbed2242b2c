#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

/// The library's own thread: it passes on what the module asks for. Lives as long as the CameraHost.
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

    /// Tells the client that the module wants this camera closed.
    void requestClose(long int cameraId, bool lost);

    /// The thread of the process or null; `set` makes it known and takes it away.
    static std::shared_ptr<OperateThread> current();
    static void setCurrent(std::shared_ptr<OperateThread> thread);

private:
    void post(Job job);
    void run();

    const CloseNotice m_closeNotice;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    bool m_bStop = false;
    std::thread m_thread;
};
