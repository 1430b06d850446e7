#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace cvlog::widgets {

/// A long sequence in chunks: inserting or removing costs about the same wherever the place is and however long the
/// sequence. Walking along it is as fast as along an array. Positions count from 0. Insert throws std::bad_alloc and
/// then has changed nothing. T moves without failing.
template <class T>
class ChunkedSequence {
public:
    static constexpr std::size_t kChunk = 512; // elements at most
    static constexpr std::size_t kLongestRun = 64;

    std::size_t size() const noexcept { return size_; }
    T& operator[](std::size_t i) noexcept {
        look(i);
        return chunks_[near_.chunk].slots[i - near_.first];
    }
    const T& operator[](std::size_t i) const noexcept {
        look(i);
        return chunks_[near_.chunk].slots[i - near_.first];
    }

    void insert(std::size_t at, T value) { insertRun(at, {&value, 1}); }

    /// Takes values out of a run of kLongestRun at most, which come to stand side by side.
    void insertRun(std::size_t at, std::span<T> values) {
        makeRoom(at, values.size());
        Chunk& chunk = chunks_[near_.chunk];
        T* const begin = chunk.slots.get();
        const std::size_t offset = at - near_.first;
        std::move_backward(begin + offset, begin + chunk.size, begin + chunk.size + values.size());
        std::move(values.begin(), values.end(), begin + offset);
        const auto count = static_cast<std::uint32_t>(values.size());
        chunk.size += count;
        size_ += count;
        after_ = at + count;
        countChange(near_.chunk, count);
    }

    void remove(std::size_t at) noexcept {
        look(at);
        Chunk& chunk = chunks_[near_.chunk];
        T* const begin = chunk.slots.get();
        std::move(begin + (at - near_.first) + 1, begin + chunk.size, begin + (at - near_.first));
        begin[--chunk.size] = T{};
        --size_;
        if (chunk.size > 0) return countChange(near_.chunk, static_cast<std::uint32_t>(-1));
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(near_.chunk));
        recount();
    }

    void clear() noexcept {
        chunks_.clear();
        size_ = 0;
        recount();
    }

    /// How many elements stand before the first one that is not `before`, all behind that one not being it either. The
    /// elements that may be looked at next are `comingUp`.
    template <class Before, class ComingUp>
    std::size_t partitionPoint(Before&& before, ComingUp&& comingUp) const {
        const auto behind = std::partition_point(chunks_.begin(), chunks_.end(),
                                                 [&](const Chunk& chunk) { return before(chunk.slots[0]); });
        if (behind == chunks_.begin()) return 0;
        const Chunk& chunk = *std::prev(behind);
        const T* const begin = chunk.slots.get();
        std::size_t within = 1;
        for (std::size_t end = chunk.size; within < end;) {
            const std::size_t middle = within + (end - within) / 2;
            comingUp(begin[within + (middle - within) / 2]);
            comingUp(begin[middle + (end - middle) / 2]);
            if (before(begin[middle]))
                within = middle + 1;
            else
                end = middle;
        }
        return firstOf(static_cast<std::size_t>(behind - chunks_.begin()) - 1) + within;
    }

    /// The position of the first element that fits; size() when none does.
    template <class Fits>
    std::size_t find(Fits&& fits) const {
        std::size_t first = 0;
        for (const Chunk& chunk : chunks_) {
            const T* const begin = chunk.slots.get();
            const T* const end = begin + chunk.size;
            if (const T* const found = std::find_if(begin, end, fits); found != end)
                return first + static_cast<std::size_t>(found - begin);
            first += chunk.size;
        }
        return size_;
    }

private:
    struct Chunk {
        explicit Chunk(std::size_t room)
            : slots(std::make_unique<T[]>(room)), capacity(static_cast<std::uint32_t>(room)) {}
        std::unique_ptr<T[]> slots;
        std::uint32_t size = 0;
        std::uint32_t capacity;
    };
    /// A chunk and the position of its first element.
    struct Near {
        std::size_t chunk = 0;
        std::size_t first = 0;
    };

    /// Brings near the chunk of an element; the next one is mostly in the same.
    void look(std::size_t i) const noexcept {
        if (i - near_.first < chunks_[near_.chunk].size) return;
        near_ = {0, 0};
        for (std::size_t step = widest_; step > 0; step /= 2) {
            const std::size_t next = near_.chunk + step;
            if (next > chunks_.size() || near_.first + counts_[next - 1] > i) continue;
            near_ = {next, near_.first + counts_[next - 1]};
        }
    }

    std::size_t firstOf(std::size_t chunk) const noexcept {
        std::size_t first = 0;
        for (; chunk > 0; chunk &= chunk - 1) first += counts_[chunk - 1];
        return first;
    }

    /// Brings near a chunk with room for so many more elements at the position.
    void makeRoom(std::size_t at, std::size_t count) {
        const auto needed = [&] { return chunks_[near_.chunk].size + count; };
        if (chunks_.empty()) {
            addChunk(0, Chunk(std::max(kSmall, count)));
        } else if (at == size_) {
            near_ = {chunks_.size() - 1, size_ - chunks_.back().size};
        } else {
            look(at);
            if (at == near_.first && near_.chunk > 0) lookAtEndBefore(count);
        }
        if (needed() <= chunks_[near_.chunk].capacity) return;
        if (needed() <= kChunk)
            enlarge(chunks_[near_.chunk], needed());
        else if (at == near_.first + chunks_[near_.chunk].size)
            addChunkBehind();
        else if (at == after_ && at != near_.first)
            cutOff(at, count);
        else
            split(at);
    }

    /// While elements come one behind the other, those after them go out of their way.
    void cutOff(std::size_t at, std::size_t count) {
        const Near kept = near_;
        const std::size_t cut = at - near_.first;
        const std::size_t size = chunks_[near_.chunk].size;
        addChunk(near_.chunk + 1, Chunk(size - cut));
        take(chunks_[near_.chunk + 1], chunks_[near_.chunk], cut, size);
        chunks_[near_.chunk].size = static_cast<std::uint32_t>(cut);
        recount();
        near_ = kept;
        if (cut + count > chunks_[near_.chunk].capacity) addChunkBehind();
    }

    /// At the end of a chunk nothing has to move. A full one is left for a new one only while elements come one behind
    /// the other, so that chunks do not become many and small.
    void lookAtEndBefore(std::size_t count) noexcept {
        const Chunk& before = chunks_[near_.chunk - 1];
        if (before.size + count > kChunk && near_.first != after_) return;
        near_ = {near_.chunk - 1, near_.first - before.size};
    }

    static void enlarge(Chunk& chunk, std::size_t needed) {
        const std::size_t usual = chunk.capacity + std::max<std::size_t>(kSmall, chunk.capacity / 4);
        Chunk larger(std::min(kChunk, std::max(needed, usual)));
        take(larger, chunk, 0, chunk.size);
        chunk = std::move(larger);
    }

    void addChunkBehind() {
        const Near next = {near_.chunk + 1, near_.first + chunks_[near_.chunk].size};
        addChunk(next.chunk, Chunk(kChunk));
        near_ = next;
    }

    void split(std::size_t at) {
        constexpr std::size_t kHalf = kChunk / 2;
        static_assert(kHalf / 4 >= kLongestRun);
        Chunk left(kHalf + kHalf / 4);
        Chunk right(kHalf + kHalf / 4);
        addChunk(near_.chunk + 1, std::move(right));
        Chunk& whole = chunks_[near_.chunk];
        take(chunks_[near_.chunk + 1], whole, kHalf, whole.size);
        take(left, whole, 0, kHalf);
        whole = std::move(left);
        recount();
        look(at);
    }

    static void take(Chunk& to, Chunk& from, std::size_t begin, std::size_t end) noexcept {
        std::move(from.slots.get() + begin, from.slots.get() + end, to.slots.get());
        to.size = static_cast<std::uint32_t>(end - begin);
    }

    void addChunk(std::size_t index, Chunk chunk) {
        const Near kept = near_;
        if (counts_.capacity() == counts_.size()) counts_.reserve(2 * counts_.size() + 1);
        chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(index), std::move(chunk));
        recount();
        near_ = kept;
    }

    // A tree of partial sums: counts_[n - 1] is the number of elements in the last (n & -n) of the first n chunks.
    void countChange(std::size_t chunk, std::uint32_t change) noexcept {
        for (std::size_t n = chunk + 1; n <= counts_.size(); n += n & (~n + 1)) counts_[n - 1] += change;
    }

    void recount() noexcept {
        counts_.resize(chunks_.size()); // has the room
        for (std::size_t i = 0; i < chunks_.size(); ++i) counts_[i] = chunks_[i].size;
        for (std::size_t n = 1; n <= counts_.size(); ++n)
            if (const std::size_t parent = n + (n & (~n + 1)); parent <= counts_.size())
                counts_[parent - 1] += counts_[n - 1];
        widest_ = 1;
        while (widest_ * 2 <= chunks_.size()) widest_ *= 2;
        near_ = {};
    }

    static constexpr std::size_t kSmall = 16;

    std::vector<Chunk> chunks_;
    std::vector<std::uint32_t> counts_;
    std::size_t size_ = 0;
    std::size_t widest_ = 1;
    std::size_t after_ = 0; // the position behind what was inserted last
    mutable Near near_;     // what was looked at last
};

} // namespace cvlog::widgets
