// Two threads and one number, in two ways: behind a QMutex, as the module's classes do it, and without. Under the
// tsan preset the first has to be silent and the second has to be found, or the detector sees nothing of this project.

#include <QMutex>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

int number = 0;
QMutex mutex;
std::atomic<int> running{0};

void countedByTwo(bool guarded)
{
    // Both at once, and nothing that orders the two: a thread that ran alone would be no race.
    running.fetch_add(1, std::memory_order_relaxed);
    while (running.load(std::memory_order_relaxed) < 2) { }
    for (int i = 0; i < 1000; ++i) {
        const QMutexLocker locker(guarded ? &mutex : nullptr);
        ++number;
    }
}

} // namespace

int main(int argc, char **)
{
    const bool guarded = argc == 1;
    const std::unique_ptr<QThread> other(QThread::create(countedByTwo, guarded));
    other->start();
    countedByTwo(guarded);
    other->wait();
    return number > 0 ? 0 : 1;
}
