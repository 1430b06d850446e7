#pragma once

#include "core/globals.h"

#include <span>
#include <vector>

namespace cvlog::details {

/// Puts the child rows of one entry into the lists, below the entry and in order. Rows are known by identity: whatever
/// other code does with the lists meanwhile, a row never gets under another entry. Rows enter the lists complete, many
/// at a time, and no foreign code runs while they do.
class ChildRows {
public:
    /// `position` is the entry's in the list on which the user acted.
    ChildRows(core::Globals& globals, core::LogViews::ListRef view, int position);

    /// The entry's place in the view; 0 when the entry has gone, or the view.
    int entryPosition();

    /// A row for all lists, at the next `flush` at the latest.
    void add(widgets::RowPtr row) { waiting_.push_back(std::move(row)); }
    /// Brings the rows that wait into all lists. Of an entry that has gone they are dropped.
    void flush();

    /// A row for the view alone at first, with columns that fit it. What waits comes before it.
    void addToView(widgets::RowPtr row);
    /// Brings that row, and what a failure kept from them before, into the other lists, unless they got it meanwhile.
    void copyLast();
    /// Leaves it in the view alone.
    void leaveLast() noexcept { notCopied_ = 0; }

    /// The place of the last row in the view; 0 when there is none.
    int lastPosition();
    /// Takes the rows out of the lists in which their entry has gone.
    void removeOrphans();

private:
    using Lists = std::vector<core::LogViews::ListRef>;

    bool holdsEntry(const widgets::ListView& list) const noexcept;
    int placeIn(const widgets::ListView& list, widgets::RowId after) const noexcept;
    void insertIntoView(std::span<widgets::RowPtr> rows);
    void copyInto(widgets::ListView& list, int first, int last);
    void copyToOthers(const Lists& lists);
    bool isShown(const Lists& lists) const noexcept;

    core::Globals& globals_;
    core::LogViews::ListRef view_;
    widgets::RowId entry_;
    int entryGuess_;
    widgets::RowId beforeFirst_; // rows of later numbers that are child rows are these
    widgets::RowId last_ = 0;
    widgets::RowId lastCopied_ = 0;
    int lastGuess_;
    int notCopied_ = 0; // rows at the end of the view's that other lists lack
    std::vector<widgets::RowPtr> waiting_;
    std::vector<widgets::RowPtr> spare_; // memory that was used before
};

} // namespace cvlog::details
