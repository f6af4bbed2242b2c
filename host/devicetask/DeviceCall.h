#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"

#include <atomic>
#include <condition_variable>
#include <utility>

/// One piece of work for the thread of a connection. It owns whatever it touches, since its caller may give up and
/// go away while it hangs in the device.
class DeviceCall
{
public:
    virtual ~DeviceCall() = default;
    /// On the connection's thread; at most once.
    virtual DeviceError work(const DeviceSession &session) = 0;

    /// Set for a read of a node, which may use what its reader holds. Anything else may change the device.
    HeldValues::Reader m_nReader = 0;
    HeldValues::Question m_question;
    DeviceError m_error; ///< valid once m_bDone is set
    std::atomic<bool> m_bDone{false};
    std::condition_variable
        m_changed; ///< with the connection's mutex: done, or time to look at the state
};

/// A call with a result of its own. `Work` is DeviceError(const DeviceSession &, Result *).
template<class Result, class Work>
class DeviceCallOf : public DeviceCall
{
public:
    explicit DeviceCallOf(Work work)
        : m_work(std::move(work))
    {
    }
    DeviceError work(const DeviceSession &session) override { return m_work(session, &m_result); }

    Result m_result{};

private:
    Work m_work;
};
