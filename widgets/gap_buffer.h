#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace cvlog::widgets {

/// A sequence with a movable gap: inserting or removing runs at one place costs amortised constant time a row,
/// wherever the place is. Grows by a quarter, so that spare room stays small. Positions count from 0.
template <class T>
class GapBuffer {
public:
    std::size_t size() const noexcept { return capacity_ - (gapEnd_ - gapBegin_); }
    T& operator[](std::size_t i) noexcept { return slots_[i < gapBegin_ ? i : i + (gapEnd_ - gapBegin_)]; }
    const T& operator[](std::size_t i) const noexcept {
        return slots_[i < gapBegin_ ? i : i + (gapEnd_ - gapBegin_)];
    }

    void insert(std::size_t at, T value) {
        if (gapBegin_ == gapEnd_) grow();
        moveGap(at);
        slots_[gapBegin_++] = std::move(value);
    }

    void remove(std::size_t at, std::size_t count) {
        moveGap(at);
        for (std::size_t i = 0; i < count; ++i) slots_[gapEnd_ + i] = T{};
        gapEnd_ += count;
    }

    void clear() { *this = GapBuffer(); }

private:
    void grow() {
        const std::size_t larger = std::max<std::size_t>(16, capacity_ + capacity_ / 4);
        auto slots = std::make_unique<T[]>(larger);
        std::move(slots_.get(), slots_.get() + gapBegin_, slots.get());
        const std::size_t tail = capacity_ - gapEnd_;
        std::move(slots_.get() + gapEnd_, slots_.get() + capacity_, slots.get() + (larger - tail));
        slots_ = std::move(slots);
        gapEnd_ = larger - tail;
        capacity_ = larger;
    }

    void moveGap(std::size_t at) {
        if (at < gapBegin_) {
            std::move_backward(slots_.get() + at, slots_.get() + gapBegin_, slots_.get() + gapEnd_);
            gapEnd_ -= gapBegin_ - at;
        } else if (at > gapBegin_) {
            const std::size_t count = at - gapBegin_;
            std::move(slots_.get() + gapEnd_, slots_.get() + gapEnd_ + count, slots_.get() + gapBegin_);
            gapEnd_ += count;
        }
        gapBegin_ = at;
    }

    std::unique_ptr<T[]> slots_;
    std::size_t capacity_ = 0;
    std::size_t gapBegin_ = 0;
    std::size_t gapEnd_ = 0;
};

} // namespace cvlog::widgets
