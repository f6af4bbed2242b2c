#pragma once

#include <QtGlobal>

#include <atomic>
#include <thread>
#include <vector>

/// Four threads that read features of one camera through its task all the time, as the module does.
class TaskReaders
{
public:
    static constexpr int THREADS = 4;

    explicit TaskReaders(long int cameraId);
    ~TaskReaders();

    /// Reads since the last forget(), of all threads.
    int successes() const { return m_nSuccesses; }
    int failures() const { return m_nFailures; }
    /// The error code of the last failed read.
    int lastError() const { return m_nLastError; }
    /// True when every thread has had a good read since the last forget().
    bool allSucceed() const;
    void forget();
    void stop();

private:
    void read(int thread);

    long int m_nCameraId;
    std::atomic<bool> m_bStop{false};
    std::atomic<int> m_nRound{0};
    std::atomic<int> m_nSuccesses{0};
    std::atomic<int> m_nFailures{0};
    std::atomic<int> m_nLastError{0};
    std::atomic<bool> m_succeeded[THREADS] = {};
    std::vector<std::thread> m_threads;
};
