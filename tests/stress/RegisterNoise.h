#pragma once

#include "host/simulator/SimulatedDevices.h"

#include <atomic>
#include <memory>
#include <thread>

/// Changes registers of a simulated device at random behind everybody's back, on a thread of its own, from its
/// construction until stop().
class RegisterNoise
{
public:
    RegisterNoise(std::shared_ptr<SimulatorControl> control, quint32 seed);
    ~RegisterNoise() { stop(); }
    Q_DISABLE_COPY(RegisterNoise)

    /// Returns when the last change was made, with the number of changes.
    int stop();

private:
    std::atomic<bool> m_bStop{false};
    std::atomic<int> m_nChanges{0};
    std::thread m_thread;
};
