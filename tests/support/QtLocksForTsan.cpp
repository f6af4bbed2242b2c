// Shows to the thread sanitizer what orders threads in Qt. Qt is not instrumented and its mutex waits on a futex of its
// own, so the sanitizer would report every pair of accesses that such a mutex keeps apart. These definitions stand in
// front of Qt's in each test program of the tsan preset, for the calls of this project; calls inside Qt are bound
// already. Queued signals are left out: nothing that they carry is shared. Queued functors own what they captured.

#include <QDeadlineTimer>
#include <QFutureInterfaceBase>
#include <QMetaObject>
#include <QMutex>
#include <QRunnable>
#include <QThread>
#include <QThreadPool>
#include <QWaitCondition>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

constexpr unsigned RECURSIVE = __tsan_mutex_write_reentrant;

/// Qt's own definition. Some are called before any constructor of the program has run.
template<typename Result, typename... Arguments>
auto next(const char *mangledName)
{
    return reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, mangledName));
}

void acquired(QMutex *mutex, unsigned flags = 0)
{
    __tsan_mutex_post_lock(mutex, RECURSIVE | flags, 0);
}

template<typename Wait>
bool waitUnlocked(QMutex *mutex, const Wait &wait)
{
    __tsan_mutex_pre_unlock(mutex, 0);
    __tsan_mutex_post_unlock(mutex, 0);
    const bool woken = wait();
    __tsan_mutex_pre_lock(mutex, RECURSIVE);
    acquired(mutex);
    return woken;
}

bool joined(QThread *thread, bool ended)
{
    if (ended) {
        __tsan_acquire(thread);
    }
    return ended;
}

/// A job of the thread pool that sees all that was done before it was handed over.
class HandedOver : public QRunnable
{
public:
    explicit HandedOver(QRunnable *job)
        : m_pJob(job)
    {
        __tsan_release(this);
    }
    void run() override
    {
        __tsan_acquire(this);
        const bool deletes = m_pJob->autoDelete();
        m_pJob->run();
        if (deletes) {
            delete m_pJob;
        }
    }

private:
    QRunnable *const m_pJob;
};

/// A functor on its way to another thread that sees all that was done before it was posted.
class Posted : public QtPrivate::QSlotObjectBase
{
public:
    explicit Posted(QtPrivate::QSlotObjectBase *functor)
        : QSlotObjectBase(&Posted::impl)
        , m_pFunctor(functor)
    {
        __tsan_release(this);
    }

private:
    static void impl(int which, QSlotObjectBase *self, QObject *receiver, void **arguments, bool *)
    {
        __tsan_acquire(self);
        auto *posted = static_cast<Posted *>(self);
        if (which == Call) {
            posted->m_pFunctor->call(receiver, arguments);
            __tsan_release(self);
        } else if (which == Destroy) {
            posted->m_pFunctor->destroyIfLastRef();
            delete posted;
        }
    }

    QSlotObjectBase *const m_pFunctor;
};

/// What all copies of one future share.
void *sharedStateOf(QFutureInterfaceBase *future)
{
    return &future->mutex(0);
}

} // namespace

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto lockQt = next<void, QMutex *>("_ZN6QMutex4lockEv");
    __tsan_mutex_pre_lock(this, RECURSIVE);
    lockQt(this);
    acquired(this);
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto tryLockQt = next<bool, QMutex *, int>("_ZN6QMutex7tryLockEi");
    __tsan_mutex_pre_lock(this, RECURSIVE | __tsan_mutex_try_lock);
    const bool locked = tryLockQt(this, timeout);
    acquired(this, __tsan_mutex_try_lock | (locked ? 0 : __tsan_mutex_try_lock_failed));
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto unlockQt = next<void, QMutex *>("_ZN6QMutex6unlockEv");
    __tsan_mutex_pre_unlock(this, 0);
    unlockQt(this);
    __tsan_mutex_post_unlock(this, 0);
}

bool QWaitCondition::wait(QMutex *mutex, QDeadlineTimer deadline)
{
    static const auto waitQt = next<bool, QWaitCondition *, QMutex *, QDeadlineTimer>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    return waitUnlocked(mutex, [&] { return waitQt(this, mutex, deadline); });
}

bool QWaitCondition::wait(QMutex *mutex, unsigned long time)
{
    static const auto waitQt =
        next<bool, QWaitCondition *, QMutex *, unsigned long>("_ZN14QWaitCondition4waitEP6QMutexm");
    return waitUnlocked(mutex, [&] { return waitQt(this, mutex, time); });
}

void QThread::start(Priority priority)
{
    static const auto startQt = next<void, QThread *, Priority>("_ZN7QThread5startENS_8PriorityE");
    static const char known[] = "endIsShownToTsan";
    if (!property(known).toBool()) {
        setProperty(known, true);
        connect(
            this, &QThread::finished, this, [this] { __tsan_release(this); }, Qt::DirectConnection);
    }
    startQt(this, priority);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static const auto waitQt =
        next<bool, QThread *, QDeadlineTimer>("_ZN7QThread4waitE14QDeadlineTimer");
    return joined(this, waitQt(this, deadline));
}

bool QThread::wait(unsigned long time)
{
    static const auto waitQt = next<bool, QThread *, unsigned long>("_ZN7QThread4waitEm");
    return joined(this, waitQt(this, time));
}

void QThreadPool::start(QRunnable *runnable, int priority)
{
    static const auto startQt =
        next<void, QThreadPool *, QRunnable *, int>("_ZN11QThreadPool5startEP9QRunnablei");
    startQt(this, new HandedOver(runnable), priority);
}

void QFutureInterfaceBase::reportFinished()
{
    static const auto reportQt =
        next<void, QFutureInterfaceBase *>("_ZN20QFutureInterfaceBase14reportFinishedEv");
    __tsan_release(sharedStateOf(this));
    reportQt(this);
}

void QFutureInterfaceBase::waitForFinished()
{
    static const auto waitQt =
        next<void, QFutureInterfaceBase *>("_ZN20QFutureInterfaceBase15waitForFinishedEv");
    waitQt(this);
    __tsan_acquire(sharedStateOf(this));
}

bool QMetaObject::invokeMethodImpl(QObject *object, QtPrivate::QSlotObjectBase *slot,
                                   Qt::ConnectionType type, void *ret)
{
    static const auto invokeQt =
        next<bool, QObject *, QtPrivate::QSlotObjectBase *, Qt::ConnectionType, void *>(
            "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14"
            "ConnectionTypeEPv");
    return invokeQt(object, new Posted(slot), type, ret);
}
