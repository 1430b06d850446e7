#pragma once

#include <cstddef>

namespace cvlog::bench {

/// The bytes that the program holds of what it asked operator new for.
std::size_t allocatedBytes() noexcept;

/// The most that it held at a time since watchPeak() was called last.
std::size_t peakOfAllocatedBytes() noexcept;
void watchPeak() noexcept;

} // namespace cvlog::bench
