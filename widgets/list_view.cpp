#include "widgets/list_view.h"

#include "base/text.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::widgets {

ListView::ListView(ports::Collator& collator, ports::TextMeasurer& measurer, std::shared_ptr<RowIds> rowIds)
    : collator_(collator), measurer_(measurer),
      rowIds_(rowIds ? std::move(rowIds) : std::make_shared<RowIds>()),
      fontNumber_(measurer.fontNumber(font_)) {}

ListView::~ListView() = default;

void ListView::attach(std::unique_ptr<ListViewPeer> peer) { peer_ = std::move(peer); }

std::int32_t ListView::windowHandle() const { return peer_ ? peer_->windowHandle() : 0; }

RowId ListView::insert(int position, RowPtr content, bool selected) {
    Entry entry{std::move(content), ++rowIds_->last, selected};
    const RowId id = entry.id;
    insertEntries(position, {&entry, 1});
    return id;
}

void ListView::insertCopy(int position, const ListView& source, int sourcePosition) {
    insertCopies(position, source, sourcePosition, 1);
}

RowId ListView::insertRun(int position, std::span<RowPtr> contents) {
    std::vector<Entry> entries;
    entries.reserve(contents.size());
    for (RowPtr& content : contents) entries.push_back({std::move(content), ++rowIds_->last, false});
    insertEntries(position, entries);
    return rowIds_->last;
}

void ListView::insertCopies(int position, const ListView& source, int sourcePosition, int count) {
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(count));
    for (int row = sourcePosition; row < sourcePosition + count; ++row) entries.push_back(source.entry(row));
    insertEntries(position, entries);
}

void ListView::insertEntries(int position, std::span<Entry> entries) {
    while (!entries.empty()) {
        const std::size_t count = sorted_ ? 1 : std::min(entries.size(), Entries::kLongestRun);
        insertPart(sorted_ ? sortedPlace(*entries.front().content) : position, entries.first(count));
        entries = entries.subspan(count);
        position += static_cast<int>(count);
    }
}

void ListView::insertPart(int place, std::span<Entry> entries) {
    growWidest(entries);
    const auto selected = static_cast<int>(std::ranges::count_if(entries, &Entry::selected));
    const auto count = static_cast<int>(entries.size());
    const RowId last = entries.back().id;
    rows_.insertRun(static_cast<std::size_t>(place - 1), entries);
    lastPlaced_ = {last, place + count - 1};
    inOrder_ = inOrder_ && sorted_;
    selectedCount_ += selected;
    if (focused_ >= place) focused_ += count;
    tellPeer([place, count](ListViewPeer& peer) { peer.rowsInserted(place, count); });
}

void ListView::remove(int position) {
    shrinkWidest(row(position));
    rowKeys_.set(idAt(position), {});
    selectedCount_ -= isSelected(position) ? 1 : 0;
    rows_.remove(static_cast<std::size_t>(position - 1));
    if (focused_ == position)
        focused_ = 0;
    else if (focused_ > position)
        --focused_;
    tellPeer([position](ListViewPeer& peer) { peer.rowsRemoved(position, 1); });
}

void ListView::clear() {
    rows_.clear();
    rowKeys_.clear();
    selectedCount_ = 0;
    focused_ = 0;
    inOrder_ = true;
    std::fill(widest_.begin(), widest_.end(), Widest{});
    tellPeer([](ListViewPeer& peer) { peer.cleared(); });
}

int ListView::positionOf(RowId id, int guess) const noexcept {
    constexpr int kNear = 64;
    const auto searchAround = [&](int middle) {
        for (int distance = 0; distance <= kNear; ++distance)
            for (const int position : {middle + distance, middle - distance})
                if (position >= 1 && position <= rowCount() && entry(position).id == id) return position;
        return 0;
    };
    // Who inserted a row asks for its place: in a sorted list that is seldom the guess.
    if (const int position = searchAround(id == lastPlaced_.id ? lastPlaced_.place : guess); position != 0)
        return position;
    const std::size_t found = rows_.find([id](const Entry& entry) { return entry.id == id; });
    return found == rows_.size() ? 0 : static_cast<int>(found) + 1;
}

int ListView::rowOf(std::u16string_view key) const {
    const RowId id = rowKeys_.find(key);
    return id == 0 ? 0 : positionOf(id);
}

bool ListView::setRowKey(int position, std::u16string_view key) {
    const int owner = rowOf(key);
    if (owner != 0 && owner != position) return false;
    rowKeys_.set(idAt(position), key);
    return true;
}

void ListView::replace(int position, RowPtr content) {
    const int sortColumn = sortKey_ + 1;
    inOrder_ = inOrder_ && content->columnText(sortColumn) == row(position).columnText(sortColumn);
    shrinkWidest(row(position));
    const Entry changed{content};
    growWidest({&changed, 1});
    entry(position).content = std::move(content);
    tellPeer([position](ListViewPeer& peer) { peer.rowChanged(position); });
}

void ListView::setCellTag(int position, std::u16string_view key, std::u16string_view tag) {
    const int cell = row(position).cellOf(key);
    if (cell == 0) throw std::out_of_range("the row has no such cell");
    entry(position).content = row(position).withCell(cell, CellField::Tag, tag);
}

void ListView::select(int position, bool selected) {
    if (isSelected(position) == selected) return;
    userSelected(position, selected);
    tellPeer([](ListViewPeer& peer) { peer.selectionChanged(); });
}

void ListView::selectAll(bool selected) {
    userSelectedAll(selected);
    tellPeer([](ListViewPeer& peer) { peer.selectionChanged(); });
}

void ListView::focusRow(int position) {
    if (focused_ == position) return;
    focused_ = position;
    tellPeer([](ListViewPeer& peer) { peer.selectionChanged(); });
}

int ListView::selectedRow() const noexcept {
    if (selectedCount_ == 0) return 0;
    if (focused_ > 0 && isSelected(focused_)) return focused_;
    int position = 1;
    while (!isSelected(position)) ++position;
    return position;
}

void ListView::setFont(const base::Font& font) {
    fontNumber_ = measurer_.fontNumber(font); // the first that can fail, so that a list never has half a font
    font_ = font;
    std::fill(widest_.begin(), widest_.end(), Widest{});
    tellPeer([](ListViewPeer& peer) { peer.appearanceChanged(); });
}

void ListView::setColours(const Colours& colours) {
    colours_ = colours;
    tellPeer([](ListViewPeer& peer) { peer.appearanceChanged(); });
}

void ListView::setEnabled(bool enabled) {
    enabled_ = enabled;
    tellPeer([](ListViewPeer& peer) { peer.appearanceChanged(); });
}

void ListView::setSmallIcons(std::shared_ptr<const ImageList> icons) {
    smallIcons_ = std::move(icons);
    tellPeer([](ListViewPeer& peer) { peer.appearanceChanged(); });
}

void ListView::setHeaderIcons(std::shared_ptr<const ImageList> icons) {
    headerIcons_ = std::move(icons);
    tellPeer([](ListViewPeer& peer) { peer.appearanceChanged(); });
}

void ListView::scrollTo(int position) {
    tellPeer([position](ListViewPeer& peer) { peer.scrollTo(position); });
}

void ListView::repaint() {
    tellPeer([](ListViewPeer& peer) { peer.repaint(); });
}

void ListView::takeFocus() {
    tellPeer([](ListViewPeer& peer) { peer.takeFocus(); });
}

void ListView::userSelected(int position, bool selected) noexcept {
    Entry& changed = entry(position);
    if (changed.selected == selected) return;
    changed.selected = selected;
    selectedCount_ += selected ? 1 : -1;
}

void ListView::userSelectedAll(bool selected) noexcept {
    if (!selected && selectedCount_ == 0) return;
    for (int position = 1; position <= rowCount(); ++position) entry(position).selected = selected;
    selectedCount_ = selected ? rowCount() : 0;
}

void ListView::userFocused(int position) noexcept { focused_ = position; }

ListView::Batch::Batch(ListView& list) : list_(list) {
    if (list_.batchDepth_++ == 0) list_.tellPeer([](ListViewPeer& peer) { peer.batchBegan(); });
}

ListView::Batch::~Batch() {
    if (--list_.batchDepth_ == 0) list_.tellPeer([](ListViewPeer& peer) { peer.batchEnded(); });
}

} // namespace cvlog::widgets
