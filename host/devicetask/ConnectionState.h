#pragma once

#include <atomic>
#include <functional>

/// Whether a device answers, shared by its connection and by the control-lost handler, which may still run while the
/// connection is taken apart. Any thread.
class ConnectionState
{
public:
    enum State {
        Live,
        Silent, ///< an access failed or hangs; only the connection itself still asks
        Gone ///< for good: another opening is needed
    };

    /// `changed` runs after each change, on the thread that found it: it must only post.
    explicit ConnectionState(std::function<void()> changed)
        : m_changed(std::move(changed))
    {
    }
    State get() const { return static_cast<State>(m_nState.load()); }
    void set(State state)
    {
        int former = m_nState;
        while (former != Gone && former != state) {
            if (m_nState.compare_exchange_weak(former, state)) {
                m_changed();
                return;
            }
        }
    }

private:
    std::atomic<int> m_nState{Live};
    const std::function<void()> m_changed;
};
