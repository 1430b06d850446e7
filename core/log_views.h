#pragma once

#include "widgets/list_view.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::core {

/// The lists of all live log controls, oldest first. The key of a list is its window handle in decimal followed by
/// "k". All lists hold the same rows in the same order.
class LogViews {
public:
    using ListRef = std::shared_ptr<widgets::ListView>;

    static std::u16string keyOf(const widgets::ListView& list);

    /// Nothing happens when a list with this key is already there.
    void add(ListRef list);
    /// Nothing happens when the list is not there.
    void remove(const widgets::ListView& list);

    /// What numbers the rows of these lists, so that a row has one number in all of them.
    const std::shared_ptr<widgets::RowIds>& rowIds() const noexcept { return rowIds_; }

    int count() const noexcept { return static_cast<int>(entries_.size()); }
    /// The oldest live list; null when there is none.
    ListRef first() const { return entries_.empty() ? nullptr : entries_.front().list; }
    /// The lists of this moment, kept alive while the caller walks them.
    std::vector<ListRef> all() const;

private:
    struct Entry {
        std::u16string key;
        ListRef list;
    };
    std::vector<Entry> entries_;
    std::shared_ptr<widgets::RowIds> rowIds_ = std::make_shared<widgets::RowIds>();
};

/// Holds back the work of all lists' peers as long as it lives, and keeps the lists alive. Nothing foreign may run
/// meanwhile: it would see lists that are not yet on the screen.
class BatchOfAll {
public:
    explicit BatchOfAll(const LogViews& views) : lists_(views.all()) {
        for (const LogViews::ListRef& list : lists_) batches_.emplace_back(*list);
    }
    const std::vector<LogViews::ListRef>& lists() const noexcept { return lists_; }

private:
    std::vector<LogViews::ListRef> lists_;
    std::deque<widgets::ListView::Batch> batches_;
};

} // namespace cvlog::core
