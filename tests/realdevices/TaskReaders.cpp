#include "tests/realdevices/TaskReaders.h"

#include "DeviceTaskModule/NodeValues.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace {

/// Pause between two reads, so that threads that fail at once leave the processors to the rest.
constexpr std::chrono::milliseconds PAUSE(1);

/// One read of a register's value, a thread another feature.
bool readOnce(QCameraTask &task, int thread, int *error)
{
    _NODE_INT_VALUE_ integer{};
    _NODE_FLOAT_VALUE_ floating{};
    QString text;
    qint64 maxLength = 0;
    switch (thread) {
    case 0:
        return task.GetIntegerValue("Width", &integer, error, true, false);
    case 1:
        return task.GetFloatValue("ExposureTimeAbs", &floating, error, true, false);
    case 2:
        return task.GetStringValue("DeviceModelName", &text, &maxLength, error, true, false);
    default:
        return task.GetIntegerValue("PixelFormat", &integer, error, true, false);
    }
}

} // namespace

TaskReaders::TaskReaders(long int cameraId)
    : m_nCameraId(cameraId)
{
    for (int thread = 0; thread < THREADS; ++thread) {
        m_threads.emplace_back([this, thread] { read(thread); });
    }
}

TaskReaders::~TaskReaders()
{
    stop();
}

bool TaskReaders::allSucceed() const
{
    return std::all_of(std::begin(m_succeeded), std::end(m_succeeded),
                       [](const std::atomic<bool> &succeeded) { return succeeded.load(); });
}

void TaskReaders::forget()
{
    ++m_nRound;
    m_nSuccesses = 0;
    m_nFailures = 0;
    for (std::atomic<bool> &succeeded : m_succeeded) {
        succeeded = false;
    }
}

void TaskReaders::stop()
{
    m_bStop = true;
    for (std::thread &thread : m_threads) {
        if (thread.joinable()) {
            thread.join();
        }
    }
}

void TaskReaders::read(int thread)
{
    while (!m_bStop) {
        // Looked up anew each time: the camera can vanish at any moment.
        QCameraBasicTask *basic = QTaskManager::Instance()->GetTaskByIDEx(m_nCameraId);
        QCameraTask *task = basic ? basic->_CameraTak() : nullptr;
        const int round = m_nRound;
        int error = 0;
        const bool good = task && readOnce(*task, thread, &error);
        if (round == m_nRound) {
            ++(good ? m_nSuccesses : m_nFailures);
            if (good) {
                m_succeeded[thread] = true;
            } else {
                m_nLastError = error;
            }
        }
        std::this_thread::sleep_for(PAUSE);
    }
}
