#include "host/workbench/DeviceThreads.h"

#include <QThreadPool>

namespace {

/// One for each device that may hang at the same time; those of idle devices end by themselves.
constexpr int MOST_THREADS = 16;
constexpr int IDLE_TIME_MS = 5000;

} // namespace

QThreadPool *deviceThreads()
{
    static QThreadPool *const s_pPool = [] {
        static QThreadPool pool;
        pool.setMaxThreadCount(MOST_THREADS);
        pool.setExpiryTimeout(IDLE_TIME_MS);
        return &pool;
    }();
    return s_pPool;
}
