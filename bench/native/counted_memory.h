#pragma once

#include <cstddef>

namespace cvlog::bench {

/// Counts what operator new holds from here on until it ends: other measurements are not slowed down. One at a time.
class CountedMemory {
public:
    CountedMemory() noexcept;
    ~CountedMemory();
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;

    /// In bytes, more than at the beginning; with what the allocator adds to fill its blocks.
    std::ptrdiff_t held() const noexcept;
    /// The most that it was.
    std::ptrdiff_t peak() const noexcept;
};

} // namespace cvlog::bench
