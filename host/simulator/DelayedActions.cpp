#include "host/simulator/DelayedActions.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

struct DelayedActions::State
{
    using Clock = std::chrono::steady_clock;

    std::mutex m_mutex;
    std::condition_variable m_condition;
    std::multimap<Clock::time_point, std::function<void()>> m_actions;
    std::thread m_thread;
    bool m_bStop = false;

    static void loop(const std::shared_ptr<State> &state)
    {
        std::unique_lock<std::mutex> lock(state->m_mutex);
        while (!state->m_bStop) {
            if (state->m_actions.empty()) {
                state->m_condition.wait(lock);
                continue;
            }
            const auto first = state->m_actions.begin();
            const Clock::time_point due = first->first;
            if (Clock::now() < due) {
                state->m_condition.wait_until(lock, due);
                continue;
            }
            std::function<void()> action = std::move(first->second);
            state->m_actions.erase(first);
            lock.unlock();
            action();
            action = nullptr; // what it holds may end here, outside the lock
            lock.lock();
        }
    }
};

DelayedActions::DelayedActions()
    : m_pState(std::make_shared<State>())
{
}

DelayedActions::~DelayedActions()
{
    std::multimap<State::Clock::time_point, std::function<void()>> dropped;
    {
        const std::lock_guard<std::mutex> lock(m_pState->m_mutex);
        m_pState->m_bStop = true;
        dropped.swap(m_pState->m_actions);
        m_pState->m_condition.notify_all();
    }
    std::thread &thread = m_pState->m_thread;
    if (!thread.joinable()) {
        return;
    }
    if (thread.get_id() == std::this_thread::get_id()) {
        thread.detach(); // the loop holds the state and ends by itself
    } else {
        thread.join();
    }
}

void DelayedActions::run(std::chrono::milliseconds delay, std::function<void()> action)
{
    const std::lock_guard<std::mutex> lock(m_pState->m_mutex);
    m_pState->m_actions.emplace(State::Clock::now() + delay, std::move(action));
    if (!m_pState->m_thread.joinable()) {
        m_pState->m_thread = std::thread([state = m_pState] { State::loop(state); });
    }
    m_pState->m_condition.notify_all();
}
