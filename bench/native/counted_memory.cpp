#include "bench/native/counted_memory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t held = 0;
std::size_t peak = 0;

// The size stands in front of each block, in room that keeps the block aligned.
constexpr std::size_t kRoom = alignof(std::max_align_t);

} // namespace

void* operator new(std::size_t size) {
    void* block = std::malloc(size + kRoom);
    if (!block) throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    held += size;
    peak = std::max(peak, held);
    return static_cast<char*>(block) + kRoom;
}

void operator delete(void* pointer) noexcept {
    if (!pointer) return;
    void* block = static_cast<char*>(pointer) - kRoom;
    held -= *static_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept { operator delete(pointer); }

namespace cvlog::bench {

std::size_t allocatedBytes() noexcept { return held; }

std::size_t peakBytes() noexcept { return peak; }

void startPeak() noexcept { peak = held; }

} // namespace cvlog::bench
