#include "host/devicetask/OperateThread.h"

namespace {

struct CurrentThread
{
    std::mutex mutex;
    std::shared_ptr<OperateThread> thread;
};

CurrentThread &currentThread()
{
    static auto *const s_pCurrent = new CurrentThread;
    return *s_pCurrent;
}

} // namespace

OperateThread::OperateThread(CloseNotice notice)
    : m_closeNotice(std::move(notice))
{
    m_thread = std::thread([this] { run(); });
}

OperateThread::~OperateThread()
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_bStop = true;
        m_changed.notify_all();
    }
    m_thread.join();
}

void OperateThread::post(Job job)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_jobs.push_back(std::move(job));
    m_changed.notify_all();
}

void OperateThread::requestClose(long int cameraId, bool lost)
{
    post([this, cameraId, lost] { m_closeNotice(cameraId, lost); });
}

std::shared_ptr<OperateThread> OperateThread::current()
{
    const std::lock_guard<std::mutex> guard(currentThread().mutex);
    return currentThread().thread;
}

void OperateThread::setCurrent(std::shared_ptr<OperateThread> thread)
{
    const std::lock_guard<std::mutex> guard(currentThread().mutex);
    currentThread().thread.swap(thread);
}

void OperateThread::run()
{
    std::unique_lock<std::mutex> guard(m_mutex);
    for (;;) {
        m_changed.wait(guard, [this] { return m_bStop || !m_jobs.empty(); });
        if (m_jobs.empty()) {
            return;
        }
        Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        guard.unlock();
        job();
        job = nullptr;
        guard.lock();
    }
}
