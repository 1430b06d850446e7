#pragma once

#include <cstddef>
#include <cstdint>

namespace cvlog::widgets {

/// Gives rows that are made one after another memory side by side, in pieces. A piece is given back when the last of its
/// rows has gone and no more come from it, so rows may outlive this. Used in one apartment, like the rows.
class RowMemory {
public:
    RowMemory() = default;
    RowMemory(const RowMemory&) = delete;
    RowMemory& operator=(const RowMemory&) = delete;
    ~RowMemory();

    /// All memory begins at a multiple of this.
    static constexpr std::size_t kStep = sizeof(std::uint64_t);
    static constexpr unsigned kDistanceBits = 12;
    static constexpr std::uint32_t kMostSteps = (1U << kDistanceBits) - 1;

    /// Memory, and how many steps it is from the beginning of its piece: 0 when it is in none.
    struct Part {
        void* begin;
        std::uint32_t distance;
    };

    /// Throws std::bad_alloc.
    Part take(std::size_t size) {
        if (size > kLargestPart) return takeAlone(size);
        const std::size_t whole = (size + kStep - 1) / kStep * kStep;
        if (whole > size_ - used_) nextPiece();
        const Part part = {reinterpret_cast<char*>(piece_) + used_,
                           static_cast<std::uint32_t>(used_ / kStep)};
        used_ += whole;
        ++piece_->users;
        return part;
    }
    /// Memory in no piece.
    static Part takeAlone(std::size_t size);
    static void giveBack(Part part) noexcept;

private:
    struct Piece {
        std::uint32_t users; // the rows in it, and the memory that still gives from it
    };
    static constexpr std::size_t kLargestPart = 1024; // larger ones are not worth the room they leave
    void nextPiece();
    static void letGo(Piece* piece) noexcept;

    Piece* piece_ = nullptr; // the one that memory comes from
    std::size_t size_ = 0;   // of it, in bytes
    std::size_t used_ = 0;
};

} // namespace cvlog::widgets
