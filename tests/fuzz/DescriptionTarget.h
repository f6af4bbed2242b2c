#pragma once

#include <cstddef>
#include <cstdint>

/// Reads a description, checks it, reads every node that is left over a device of zeros and over one of ugly bytes, and
/// writes back what it read. What must hold is asserted; everything else is for the sanitizers to find.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
