// Two threads and one number, in two ways: behind a QMutex, as the module's classes do it, and without. Under the
// tsan preset the first has to be silent and the second has to be found, or the detector sees nothing of this project.

#include <QMutex>
#include <QString>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

int number = 0;

int countedByTwo(bool guarded)
{
    QMutex mutex;
    std::atomic<int> running{0};
    const auto count = [&] {
        // Both at once, and nothing that orders the two: a thread that ran alone would be no race.
        running.fetch_add(1, std::memory_order_relaxed);
        while (running.load(std::memory_order_relaxed) < 2) { }
        for (int i = 0; i < 1000; ++i) {
            if (guarded) {
                mutex.lock();
            }
            ++number;
            if (guarded) {
                mutex.unlock();
            }
        }
    };
    const std::unique_ptr<QThread> other(QThread::create(count));
    other->start();
    count();
    other->wait();
    return number;
}

} // namespace

int main(int argc, char **)
{
    return countedByTwo(argc == 1) > 0 ? 0 : 1;
}
