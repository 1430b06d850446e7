#include "platform/headless/headless_list_view_peer.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::headless {

namespace {

std::int32_t takeHandle(PeerBook& book) {
    if (book.handlesToGive.empty()) return book.nextHandle += 4;
    const std::int32_t handle = book.handlesToGive.front();
    book.handlesToGive.pop_front();
    return handle;
}

bool looksTheSame(const widgets::RowContent& left, const widgets::RowContent& right) {
    if (left.text() != right.text() || left.smallIcon() != right.smallIcon() ||
        left.cellCount() != right.cellCount())
        return false;
    for (int cell = 1; cell <= left.cellCount(); ++cell)
        if (left.cellText(cell) != right.cellText(cell) || left.cellIcon(cell) != right.cellIcon(cell) ||
            left.cellToolTip(cell) != right.cellToolTip(cell))
            return false;
    return true;
}

bool sameColumn(const widgets::Column& left, const widgets::Column& right) {
    return left.key == right.key && left.caption == right.caption && left.width == right.width &&
           left.position == right.position && left.icon == right.icon && left.alignment == right.alignment;
}

} // namespace

HeadlessListViewPeer::HeadlessListViewPeer(widgets::ListView& list, const CallGate& gate, PeerBook& book,
                                           bool mirrored)
    : list_(list), gate_(gate), book_(book), mirrored_(mirrored), handle_(takeHandle(book)) {
    if (!book_.liveHandles.insert(handle_).second)
        fault("created", "the window handle belongs to a live window");
    mirrorAllRows();
    mirrorAllColumns();
}

HeadlessListViewPeer::~HeadlessListViewPeer() {
    if (batches_ != 0) fault("destroyed", "a batch is still open");
    book_.liveHandles.erase(handle_);
}

void HeadlessListViewPeer::batchBegan() {
    begin("batchBegan");
    if (++batches_ != 1) fault("batchBegan", "a batch is open already");
}

void HeadlessListViewPeer::batchEnded() {
    // Counted before the gate: a batch that fails to end is over all the same.
    if (--batches_ != 0) fault("batchEnded", "no batch is open");
    begin("batchEnded");
}

void HeadlessListViewPeer::rowsInserted(int first, int count) {
    begin("rowsInserted");
    if (mirrored_) {
        if (first < 1 || first > static_cast<int>(rows_.size()) + 1 || first + count - 1 > list_.rowCount())
            return fault("rowsInserted", "the rows are out of range");
        std::vector<widgets::RowPtr> inserted;
        for (int row = first; row < first + count; ++row) inserted.push_back(list_.content(row));
        rows_.insert(rows_.begin() + (first - 1), inserted.begin(), inserted.end());
    }
    if (first <= topRow_) topRow_ += count;
    topRow_ = std::max(topRow_, 1);
    end("rowsInserted");
}

void HeadlessListViewPeer::rowsRemoved(int first, int count) {
    begin("rowsRemoved");
    if (mirrored_) {
        if (first < 1 || first + count - 1 > static_cast<int>(rows_.size()))
            return fault("rowsRemoved", "the rows are out of range");
        rows_.erase(rows_.begin() + (first - 1), rows_.begin() + (first - 1 + count));
    }
    topRow_ = std::min(topRow_, list_.rowCount());
    end("rowsRemoved");
}

void HeadlessListViewPeer::rowsReordered() {
    begin("rowsReordered");
    if (mirrored_) {
        const auto byAddress = [](const widgets::RowPtr& left, const widgets::RowPtr& right) {
            return std::less<>()(left.get(), right.get());
        };
        const auto same = [](const widgets::RowPtr& left, const widgets::RowPtr& right) {
            return left.get() == right.get();
        };
        std::vector<widgets::RowPtr> before = rows_;
        mirrorAllRows();
        std::vector<widgets::RowPtr> after = rows_;
        std::sort(before.begin(), before.end(), byAddress);
        std::sort(after.begin(), after.end(), byAddress);
        if (!std::equal(before.begin(), before.end(), after.begin(), after.end(), same))
            fault("rowsReordered", "these are not the same rows");
    }
    end("rowsReordered");
}

void HeadlessListViewPeer::cleared() {
    begin("cleared");
    rows_.clear();
    topRow_ = 0;
    end("cleared");
}

void HeadlessListViewPeer::rowChanged(int row) {
    begin("rowChanged");
    if (!validRow("rowChanged", row)) return;
    if (mirrored_) rows_[static_cast<std::size_t>(row - 1)] = list_.content(row);
    end("rowChanged");
}

void HeadlessListViewPeer::selectionChanged() {
    begin("selectionChanged");
    end("selectionChanged");
}

void HeadlessListViewPeer::columnChanged(int column) {
    begin("columnChanged");
    if (column < 1 || column > list_.columnCount()) return fault("columnChanged", "no such column");
    if (columns_.size() != static_cast<std::size_t>(list_.columnCount())) mirrorAllColumns();
    columns_[static_cast<std::size_t>(column - 1)] = list_.column(column);
    for (std::size_t i = 0; i < columns_.size(); ++i) // the others made room for a moved one
        columns_[i].position = list_.column(static_cast<int>(i) + 1).position;
}

void HeadlessListViewPeer::appearanceChanged() {
    begin("appearanceChanged");
    end("appearanceChanged");
}

void HeadlessListViewPeer::scrollTo(int row) {
    begin("scrollTo");
    if (!validRow("scrollTo", row)) return;
    if (mirrored_) scrolledTo_.push_back(row);
    if (row < topRow_)
        topRow_ = row;
    else if (row >= topRow_ + kRowsInView)
        topRow_ = row - kRowsInView + 1;
    end("scrollTo");
}

void HeadlessListViewPeer::repaint() {
    begin("repaint");
    end("repaint");
}

void HeadlessListViewPeer::takeFocus() {
    begin("takeFocus");
    end("takeFocus");
}

int HeadlessListViewPeer::told(std::string_view change) const {
    const auto found = told_.find(change);
    return found == told_.end() ? 0 : found->second;
}

void HeadlessListViewPeer::verify() {
    compareRows("verify");
    compareColumns("verify");
}

void HeadlessListViewPeer::userSelects(int row, bool selected) { list_.userSelected(row, selected); }

void HeadlessListViewPeer::userFocuses(int row) { list_.userFocused(row); }

void HeadlessListViewPeer::userResizes(int column, base::Twips width) {
    list_.userResizedColumn(column, width);
    mirrorAllColumns();
}

void HeadlessListViewPeer::userMoves(int column, int position) {
    list_.userMovedColumn(column, position);
    mirrorAllColumns();
}

void HeadlessListViewPeer::userClicksHeader(int column) {
    if (auto* owner = list_.owner()) owner->columnClicked(column);
}

void HeadlessListViewPeer::userDoubleClicks() {
    if (auto* owner = list_.owner()) owner->doubleClicked();
}

void HeadlessListViewPeer::userPresses(widgets::KeyEvent& key) {
    if (auto* owner = list_.owner()) owner->keyPressed(key);
}

void HeadlessListViewPeer::userReleases(widgets::KeyEvent& key) {
    if (auto* owner = list_.owner()) owner->keyReleased(key);
}

void HeadlessListViewPeer::userReleasesButton(widgets::MouseButton button) {
    if (auto* owner = list_.owner()) owner->mouseReleased(button);
}

void HeadlessListViewPeer::userEnters() {
    if (auto* owner = list_.owner()) owner->gotFocus();
}

void HeadlessListViewPeer::userLeaves() {
    if (auto* owner = list_.owner()) owner->lostFocus();
}

void HeadlessListViewPeer::begin(const char* change) {
    if (!mirrored_) return;
    ++told_[change];
    gate_.pass(std::string("List.").append(change));
}

void HeadlessListViewPeer::end(const char* change) { compareRows(change); }

void HeadlessListViewPeer::fault(const std::string& change, const std::string& what) {
    book_.faults.push_back("list " + std::to_string(handle_) + ", " + change + ": " + what);
}

bool HeadlessListViewPeer::validRow(const char* change, int row) {
    const bool valid = row >= 1 && row <= list_.rowCount();
    if (!valid) fault(change, "no such row: " + std::to_string(row));
    return valid;
}

void HeadlessListViewPeer::mirrorAllRows() {
    rows_.clear();
    if (mirrored_)
        for (int row = 1; row <= list_.rowCount(); ++row) rows_.push_back(list_.content(row));
}

void HeadlessListViewPeer::mirrorAllColumns() {
    columns_.clear();
    for (int column = 1; column <= list_.columnCount(); ++column) columns_.push_back(list_.column(column));
}

void HeadlessListViewPeer::compareRows(const char* change) {
    if (!mirrored_) return;
    if (static_cast<int>(rows_.size()) != list_.rowCount())
        return fault(change, "the list has " + std::to_string(list_.rowCount()) + " rows, its mirror " +
                                 std::to_string(rows_.size()));
    for (int row = 1; row <= list_.rowCount(); ++row) {
        widgets::RowPtr& own = rows_[static_cast<std::size_t>(row - 1)];
        const widgets::RowPtr& theirs = list_.content(row);
        if (own.get() == theirs.get()) continue;
        if (!looksTheSame(*own, *theirs)) // a changed tag is not told: nobody sees it
            return fault(change, "row " + std::to_string(row) + " is another one");
        own = theirs;
    }
}

void HeadlessListViewPeer::compareColumns(const char* change) {
    if (static_cast<int>(columns_.size()) != list_.columnCount())
        return fault(change, "another number of columns");
    for (int column = 1; column <= list_.columnCount(); ++column)
        if (!isColumnCurrent(column))
            fault(change, "column " + std::to_string(column) + " changed without a word");
}

bool HeadlessListViewPeer::isColumnCurrent(int column) const {
    return sameColumn(columns_[static_cast<std::size_t>(column - 1)], list_.column(column));
}

HeadlessListViewPeer& peerOf(const widgets::ListView& list) {
    auto* peer = dynamic_cast<HeadlessListViewPeer*>(list.peer());
    if (!peer) throw std::logic_error("the list has no headless peer");
    return *peer;
}

} // namespace cvlog::platform::headless
