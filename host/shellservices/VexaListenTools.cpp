#include "ShellServicesModule/VexaListenTools.h"

#include <QMutex>
#include <QThread>
#include <QVector>
#include <QWaitCondition>

#include <algorithm>

namespace {

struct Registration
{
    IVexaListen *listener;
    PriorityLevel priority;
    quint64 id;
};

/// One call of notify that is on some thread's stack.
struct ActiveCall
{
    IVexaListen *listener;
    QThread *thread;
};

} // namespace

class VexaListenTools::Private
{
public:
    bool isRegistered(quint64 id) const
    {
        return std::any_of(registrations.cbegin(), registrations.cend(),
                           [id](const Registration &r) { return r.id == id; });
    }

    bool isInsideElsewhere(const IVexaListen *listener) const
    {
        return std::any_of(active.cbegin(), active.cend(), [listener](const ActiveCall &call) {
            return call.listener == listener && call.thread != QThread::currentThread();
        });
    }

    /// Whether waiting for the end of this listener's calls would, over any number of other waiters, wait for the
    /// calling thread itself.
    bool wouldWaitForItself(const IVexaListen *listener) const
    {
        QVector<const IVexaListen *> pending{listener};
        for (int i = 0; i < pending.size(); ++i) {
            for (const ActiveCall &call : active) {
                if (call.listener != pending.at(i)) {
                    continue;
                }
                for (const ActiveCall &wait : waits) {
                    if (wait.thread != call.thread || pending.contains(wait.listener)) {
                        continue;
                    }
                    const auto isOwnCall = [&wait](const ActiveCall &own) {
                        return own.listener == wait.listener
                            && own.thread == QThread::currentThread();
                    };
                    if (std::any_of(active.cbegin(), active.cend(), isOwnCall)) {
                        return true;
                    }
                    pending.append(wait.listener);
                }
            }
        }
        return false;
    }

    static void removeOne(QVector<ActiveCall> &calls, const IVexaListen *listener)
    {
        for (int i = calls.size() - 1; i >= 0; --i) {
            if (calls.at(i).listener == listener
                && calls.at(i).thread == QThread::currentThread()) {
                calls.remove(i);
                return;
            }
        }
    }

    QMutex mutex;
    QWaitCondition callEnded;
    QVector<Registration> registrations; ///< in the order of the calls
    QVector<ActiveCall> active;
    QVector<ActiveCall> waits; ///< threads in removeListener, with the listener that they wait for
    quint64 nextId = 0;
};

IVexaListen::~IVexaListen() = default;

VexaListenTools::VexaListenTools()
    : d(std::make_unique<Private>())
{
}

VexaListenTools::~VexaListenTools() = default;

VexaListenTools *VexaListenTools::instance()
{
    // Never destroyed: listeners remove themselves from static destructors too.
    static auto *const s_pInstance = new VexaListenTools;
    return s_pInstance;
}

void VexaListenTools::addListener(IVexaListen *listener, PriorityLevel priority)
{
    if (!listener) {
        return;
    }
    QMutexLocker lock(&d->mutex);
    auto &all = d->registrations;
    Registration entry{listener, priority, d->nextId};
    const auto old = std::find_if(all.begin(), all.end(), [listener](const Registration &r) {
        return r.listener == listener;
    });
    if (old != all.end()) {
        entry.id = old->id;
        all.erase(old);
    } else {
        ++d->nextId;
    }
    const auto place = std::upper_bound(
        all.begin(), all.end(), priority,
        [](PriorityLevel level, const Registration &r) { return level < r.priority; });
    all.insert(place, entry);
}

void VexaListenTools::removeListener(IVexaListen *listener)
{
    QMutexLocker lock(&d->mutex);
    auto &all = d->registrations;
    all.erase(std::remove_if(all.begin(), all.end(),
                             [listener](const Registration &r) { return r.listener == listener; }),
              all.end());
    while (d->isInsideElsewhere(listener) && !d->wouldWaitForItself(listener)) {
        d->waits.append({listener, QThread::currentThread()});
        d->callEnded.wait(&d->mutex);
        Private::removeOne(d->waits, listener);
    }
}

void VexaListenTools::notifyListeners(int event, void *data)
{
    QMutexLocker lock(&d->mutex);
    const QVector<Registration> round = d->registrations;
    for (const Registration &entry : round) {
        if (!d->isRegistered(entry.id)) {
            continue;
        }
        d->active.append({entry.listener, QThread::currentThread()});
        lock.unlock();
        entry.listener->notify(event, data);
        lock.relock();
        Private::removeOne(d->active, entry.listener);
        d->callEnded.wakeAll();
    }
}
