#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What every target defines. What must hold is asserted there; everything else is for the sanitizers to find.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Whether an input gets all checks. A fuzzer leaves the dear ones to some of its inputs, and so gets to more of them.
extern const bool CHECK_EVERYTHING;

/// Ends the process when the input broke a rule.
inline void require(bool holds, const char *rule)
{
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}
