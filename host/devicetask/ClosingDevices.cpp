#include "host/devicetask/ClosingDevices.h"

#include <QHash>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

struct Closings
{
    std::mutex mutex;
    std::condition_variable changed;
    QHash<QString, int> counts;
};

/// Never freed: a connection that hangs may end after everything else.
Closings &closings()
{
    static auto *const s_pClosings = new Closings;
    return *s_pClosings;
}

template<class IsOver>
void waitFor(int milliseconds, IsOver &&isOver)
{
    std::unique_lock<std::mutex> guard(closings().mutex);
    closings().changed.wait_for(guard, std::chrono::milliseconds(milliseconds), isOver);
}

} // namespace

void ClosingDevices::begin(const QString &id)
{
    const std::lock_guard<std::mutex> guard(closings().mutex);
    ++closings().counts[id];
}

void ClosingDevices::end(const QString &id)
{
    const std::lock_guard<std::mutex> guard(closings().mutex);
    if (--closings().counts[id] == 0) {
        closings().counts.remove(id);
    }
    closings().changed.notify_all();
}

void ClosingDevices::wait(const QString &id, int milliseconds)
{
    waitFor(milliseconds, [&id] { return !closings().counts.contains(id); });
}

void ClosingDevices::waitAll(int milliseconds)
{
    waitFor(milliseconds, [] { return closings().counts.isEmpty(); });
}
