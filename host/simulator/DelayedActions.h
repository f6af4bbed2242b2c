#pragma once

#include <chrono>
#include <functional>
#include <memory>

/// Runs actions after a delay, in order of their time, on one thread of its own that starts with the first action.
/// Destroying it drops what has not begun; it may be destroyed by one of its own actions.
class DelayedActions
{
public:
    DelayedActions();
    ~DelayedActions();
    DelayedActions(const DelayedActions &) = delete;
    DelayedActions &operator=(const DelayedActions &) = delete;

    void run(std::chrono::milliseconds delay, std::function<void()> action);

private:
    struct State;
    std::shared_ptr<State> m_pState;
};
