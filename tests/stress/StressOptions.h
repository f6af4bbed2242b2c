#pragma once

#include <QRandomGenerator>
#include <QtGlobal>

#include <cstdio>

namespace StressOptions {

/// A number from the environment, `otherwise` without one.
inline int number(const char *variable, int otherwise)
{
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber && value > 0 ? value : otherwise;
}

/// VEXA_STRESS_SEED or a new one; printed, so that a failed run can be made again.
inline quint32 seed()
{
    const quint32 fresh = QRandomGenerator::global()->bounded(1U, 1000000U);
    const auto seed = static_cast<quint32>(number("VEXA_STRESS_SEED", static_cast<int>(fresh)));
    std::printf("VEXA_STRESS_SEED=%u\n", seed);
    std::fflush(stdout);
    return seed;
}

} // namespace StressOptions
