#include "widgets/row_memory.h"

#include <algorithm>
#include <new>

namespace cvlog::widgets {

namespace {

constexpr std::size_t kFirstPiece = 2 * 1024; // a few rows need no more
constexpr std::size_t kLargestPiece = 16 * 1024;

} // namespace

RowMemory::~RowMemory() {
    if (piece_) letGo(piece_);
}

RowMemory::Part RowMemory::takeAlone(std::size_t size) { return {::operator new(size), 0}; }

void RowMemory::nextPiece() {
    static_assert(kLargestPart + kStep <= kFirstPiece && kLargestPiece <= kMostSteps * kStep);
    const std::size_t size = std::clamp(size_ * 2, kFirstPiece, kLargestPiece);
    auto* const next = new (::operator new(size)) Piece{1};
    if (piece_) letGo(piece_);
    piece_ = next;
    size_ = size;
    used_ = kStep; // the piece's own
}

void RowMemory::giveBack(Part part) noexcept {
    if (part.distance == 0) return ::operator delete(part.begin);
    letGo(reinterpret_cast<Piece*>(static_cast<char*>(part.begin) - part.distance * kStep));
}

void RowMemory::letGo(Piece* piece) noexcept {
    static_assert(sizeof(Piece) <= kStep);
    if (--piece->users == 0) ::operator delete(piece);
}

} // namespace cvlog::widgets
