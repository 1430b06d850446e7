#include "details/child_rows.h"

#include "base/failure.h"
#include "core/column_fit.h"
#include "core/log_resources.h"
#include "core/log_row_kind.h"

#include <algorithm>
#include <deque>
#include <exception>

namespace cvlog::details {

namespace {

using widgets::ListView;

/// The lists put off their work on the screen as long as it lives.
class Batches {
public:
    explicit Batches(const std::vector<core::LogViews::ListRef>& lists) {
        for (const auto& list : lists) batches_.emplace_back(*list);
    }

private:
    std::deque<ListView::Batch> batches_;
};

// Code that ran meanwhile may have switched it on again; a child row has its place below its entry and no other.
void keepUnsorted(ListView& list) {
    if (list.sorted()) list.setSorted(false);
}

} // namespace

ChildRows::ChildRows(core::Globals& globals, core::LogViews::ListRef view, int position)
    : globals_(globals), view_(std::move(view)), entry_(view_->idAt(position)), entryGuess_(position),
      beforeFirst_(globals.LogViews.rowIds()->last), lastGuess_(position) {}

bool ChildRows::isShown(const Lists& lists) const noexcept {
    return std::ranges::find(lists, view_) != lists.end();
}

int ChildRows::entryPosition() {
    if (!isShown(globals_.LogViews.all())) return 0;
    const int position = view_->positionOf(entry_, entryGuess_);
    if (position != 0) entryGuess_ = position;
    return position;
}

int ChildRows::lastPosition() { return last_ == 0 ? 0 : view_->positionOf(last_, lastGuess_); }

bool ChildRows::holdsEntry(const ListView& list) const noexcept {
    return list.positionOf(entry_, entryGuess_) != 0;
}

int ChildRows::placeIn(const ListView& list, widgets::RowId after) const noexcept {
    const int position = after == 0 ? 0 : list.positionOf(after, lastGuess_);
    if (position != 0) return position + 1;
    int row = list.positionOf(entry_, entryGuess_);
    while (row < list.rowCount() && core::IsChildRow(list.row(row + 1))) ++row;
    return row + 1;
}

void ChildRows::insertIntoView(std::span<widgets::RowPtr> rows) {
    const int place = placeIn(*view_, last_);
    last_ = view_->insertRun(place, rows);
    notCopied_ += static_cast<int>(rows.size());
    lastGuess_ = place + static_cast<int>(rows.size()) - 1;
}

void ChildRows::copyInto(ListView& list, int first, int last) {
    keepUnsorted(list);
    core::AttachImageLists(globals_, list);
    int place = lastCopied_ == 0 ? list.positionOf(entry_, entryGuess_) + 1 : placeIn(list, lastCopied_);
    int row = first;
    // A list that was made meanwhile has begun with rows that are here, and one that failed may have got some.
    for (; row <= last && place <= list.rowCount() && list.idAt(place) == view_->idAt(row); ++row) ++place;
    if (row > last) return;
    list.insertCopies(place, *view_, row, last - row + 1);
    core::AutoSizeColumns(list, place, place + last - row);
}

// A list that fails does not keep the rows from the others; until all have them they count as not copied.
void ChildRows::copyToOthers(const Lists& lists) {
    const int last = lastPosition();
    if (last == 0) return;
    std::exception_ptr failure;
    for (const auto& list : lists) {
        if (list == view_ || !holdsEntry(*list)) continue;
        try {
            copyInto(*list, last - notCopied_ + 1, last);
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
    }
    if (failure) std::rethrow_exception(failure);
    lastCopied_ = last_;
    notCopied_ = 0;
}

void ChildRows::flush() {
    if (waiting_.empty()) return;
    std::vector<widgets::RowPtr> rows = std::exchange(waiting_, std::move(spare_));
    const base::ScopeExit done([&] {
        rows.clear();
        spare_ = std::move(rows);
    });
    if (entryPosition() == 0) return;
    const Lists lists = globals_.LogViews.all();
    const Batches batches(lists);
    keepUnsorted(*view_);
    insertIntoView(rows);
    copyToOthers(lists);
}

void ChildRows::addToView(widgets::RowPtr row) {
    flush();
    if (entryPosition() == 0) return;
    const ListView::Batch batch(*view_);
    keepUnsorted(*view_);
    insertIntoView({&row, 1});
    core::AutoSizeColumns(*view_, lastGuess_);
}

void ChildRows::copyLast() {
    if (last_ == lastCopied_ || entryPosition() == 0) return;
    const Lists lists = globals_.LogViews.all();
    const Batches batches(lists);
    copyToOthers(lists);
}

void ChildRows::removeOrphans() {
    const Lists lists = globals_.LogViews.all();
    const Batches batches(lists);
    for (const auto& list : lists) {
        if (holdsEntry(*list)) continue;
        for (int row = list->rowCount(); row >= 1; --row)
            if (list->idAt(row) > beforeFirst_ && core::IsChildRow(list->row(row))) list->remove(row);
    }
}

} // namespace cvlog::details
