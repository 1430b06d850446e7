#include "bench/native/counted_memory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

/// Of the C library: what a block has room for, 0 for null.
extern "C" std::size_t malloc_usable_size(void* block) noexcept;

namespace {

bool counting = false;
std::ptrdiff_t heldBytes = 0;
std::ptrdiff_t mostBytes = 0;

} // namespace

void* operator new(std::size_t size) {
    void* block = std::malloc(size);
    if (!block) throw std::bad_alloc();
    if (counting) {
        heldBytes += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
        mostBytes = std::max(mostBytes, heldBytes);
    }
    return block;
}

void operator delete(void* pointer) noexcept {
    if (counting) heldBytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(pointer));
    std::free(pointer);
}

void operator delete(void* pointer, std::size_t) noexcept { operator delete(pointer); }

namespace cvlog::bench {

CountedMemory::CountedMemory() noexcept {
    heldBytes = 0;
    mostBytes = 0;
    counting = true;
}

CountedMemory::~CountedMemory() { counting = false; }

std::ptrdiff_t CountedMemory::held() const noexcept { return heldBytes; }

std::ptrdiff_t CountedMemory::peak() const noexcept { return mostBytes; }

} // namespace cvlog::bench
