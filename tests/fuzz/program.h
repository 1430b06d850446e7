#pragma once

#include "tests/fuzz/inputs.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

// A fuzz program tries inputs until one does harm. It is driven by our own driver, which makes its inputs by a seed, or
// by clang's libFuzzer, which looks for inputs that reach new code.

/// Tries one input; ends the program when something is wrong.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace cvlog::tests {

inline void endOnFault(const std::string& fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

} // namespace cvlog::tests
