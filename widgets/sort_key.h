#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

namespace cvlog::widgets {

class SortKeyPtr;

/// Keys that were put in order together. Their ranks compare as they do.
struct Ranking {
    std::uint32_t ranks = 0; // how many there are; 0 until all have theirs
};

/// The collation key of a text in one column. Rows with the same text share one, so a column of few texts has few.
/// Immutable but for its rank.
class SortKey {
public:
    static SortKeyPtr make(int column, std::string_view bytes);
    SortKey(const SortKey&) = delete;
    SortKey& operator=(const SortKey&) = delete;

    int column() const noexcept { return column_; }
    std::string_view bytes() const noexcept { return {reinterpret_cast<const char*>(this + 1), length_}; }

    /// Null while it has none.
    const Ranking* ranking() const noexcept { return ranking_.get(); }
    /// From 0; equal keys have equal ranks.
    std::uint32_t rank() const noexcept { return rank_; }
    void rankIn(const std::shared_ptr<const Ranking>& ranking, std::uint32_t rank) const noexcept {
        ranking_ = ranking;
        rank_ = rank;
    }
    void setRank(std::uint32_t rank) const noexcept { rank_ = rank; }

private:
    friend class SortKeyPtr;

    SortKey(int column, std::uint32_t length) noexcept : length_(length), column_(column) {}
    ~SortKey() = default;

    mutable std::uint32_t references_ = 0;
    mutable std::uint32_t rank_ = 0;
    mutable std::shared_ptr<const Ranking> ranking_;
    std::uint32_t length_;
    int column_;
    // the bytes follow
};

inline bool operator<(const SortKey& left, const SortKey& right) noexcept {
    return left.bytes() < right.bytes();
}

/// A counted reference to a key. Keys belong to one apartment, so the count is a plain number.
class SortKeyPtr {
public:
    SortKeyPtr() = default;
    explicit SortKeyPtr(const SortKey* key) noexcept : key_(key) {
        if (key_) ++key_->references_;
    }
    SortKeyPtr(const SortKeyPtr& other) noexcept : SortKeyPtr(other.key_) {}
    SortKeyPtr(SortKeyPtr&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    SortKeyPtr& operator=(SortKeyPtr other) noexcept {
        std::swap(key_, other.key_);
        return *this;
    }
    ~SortKeyPtr() {
        if (key_ && --key_->references_ == 0) destroy(key_);
    }
    const SortKey& operator*() const noexcept { return *key_; }
    const SortKey* operator->() const noexcept { return key_; }
    const SortKey* get() const noexcept { return key_; }

private:
    static void destroy(const SortKey* key) noexcept;
    const SortKey* key_ = nullptr;
};

} // namespace cvlog::widgets
