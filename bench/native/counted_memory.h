#pragma once

#include <cstddef>

namespace cvlog::bench {

/// The bytes that the program holds of what it asked operator new for.
std::size_t allocatedBytes() noexcept;

} // namespace cvlog::bench
