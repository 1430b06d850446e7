#pragma once

#include <cstddef>

namespace cvlog::bench {

/// The bytes that the program holds of what it asked operator new for.
std::size_t allocatedBytes() noexcept;

/// The most that it held since the last call of `startPeak`.
std::size_t peakBytes() noexcept;
void startPeak() noexcept;

} // namespace cvlog::bench
