#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QObject>

#include <functional>
#include <mutex>

/// Carries notices from foreign threads to the thread of one receiver, and drops them once the receiver has gone.
class LossSink
{
public:
    explicit LossSink(QObject *receiver)
        : m_pReceiver(receiver)
    {
    }
    /// Runs `notice` on the receiver's thread. Any thread; never blocks on the receiver.
    void post(const std::function<void()> &notice);
    /// No notice runs after this returned, when it is called on the receiver's thread.
    void detach();

private:
    std::mutex m_mutex;
    QObject *m_pReceiver;
};
