#include "host/devicetask/LossSink.h"

void LossSink::post(const std::function<void()> &notice)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (m_pReceiver) {
        QMetaObject::invokeMethod(m_pReceiver, notice, Qt::QueuedConnection);
    }
}

void LossSink::detach()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_pReceiver = nullptr;
}
