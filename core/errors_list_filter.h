#pragma once

#include "base/text.h"

#include <bitset>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace cvlog::core {

/// Which kinds of lines of an errors file are hidden, in the order of the options document. A kind is known by one
/// character, whatever its case.
class ErrorsListFilter {
public:
    ErrorsListFilter() = default;
    ErrorsListFilter(std::initializer_list<std::pair<char16_t, bool>> items) {
        for (const auto& [kind, hidden] : items) add(kind, hidden);
    }

    /// Nothing happens when the kind is already there.
    void add(char16_t kind, bool hidden) {
        if (find(kind)) return;
        const char16_t folded = items_.emplace_back(base::foldCase(kind), hidden).first;
        for (std::size_t unit = 0; unit < hiddenAscii_.size(); ++unit)
            if (base::foldCase(static_cast<char16_t>(unit)) == folded) hiddenAscii_.set(unit, hidden);
    }

    /// False for a kind that is not there.
    bool hides(char16_t kind) const noexcept {
        if (kind < hiddenAscii_.size()) return hiddenAscii_[kind];
        const auto* item = find(kind);
        return item && item->second;
    }

    std::size_t count() const noexcept { return items_.size(); }

    /// True when `later` differs in one of the items that this filter has: by place, a missing one differs, and
    /// further ones of `later` do not count.
    bool differsIn(const ErrorsListFilter& later) const noexcept {
        for (std::size_t i = 0; i < items_.size(); ++i)
            if (i >= later.items_.size() || items_[i].second != later.items_[i].second) return true;
        return false;
    }

    friend bool operator==(const ErrorsListFilter&, const ErrorsListFilter&) = default;

private:
    const std::pair<char16_t, bool>* find(char16_t kind) const noexcept {
        const char16_t folded = base::foldCase(kind);
        for (const auto& item : items_)
            if (item.first == folded) return &item;
        return nullptr;
    }

    std::vector<std::pair<char16_t, bool>> items_;
    std::bitset<0x80> hiddenAscii_; // of either case; nearly all kinds are among these
};

} // namespace cvlog::core
