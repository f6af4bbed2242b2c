#pragma once

#include <csignal>
#include <sys/resource.h>

/// As long as it lives no file of this process can grow beyond so many bytes, as on a disk that is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
        : m_pHandler(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, m_pHandler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_before{};
    void (*m_pHandler)(int);
};
