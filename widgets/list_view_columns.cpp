// The columns of a list: captions, widths, display order, and the widths of what they show.

#include "widgets/list_view.h"

#include "base/text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace cvlog::widgets {

void ListView::setColumns(std::vector<Column> columns) {
    columns_ = std::move(columns);
    for (std::size_t i = 0; i < columns_.size(); ++i) columns_[i].position = static_cast<int>(i) + 1;
    widest_.assign(columns_.size(), Widest{});
    for (int index = 1; index <= columnCount(); ++index)
        tellPeer([index](ListViewPeer& peer) { peer.columnChanged(index); });
}

int ListView::columnOf(std::u16string_view key) const noexcept {
    const auto found = std::find_if(columns_.begin(), columns_.end(), [key](const Column& column) {
        return base::equalsIgnoringCase(column.key, key);
    });
    return found == columns_.end() ? 0 : static_cast<int>(found - columns_.begin()) + 1;
}

void ListView::setColumnWidth(int index, base::Twips width) {
    columnAt(index).width = width;
    tellPeer([index](ListViewPeer& peer) { peer.columnChanged(index); });
}

void ListView::setColumnCaption(int index, std::u16string_view caption) {
    columnAt(index).caption = caption;
    tellPeer([index](ListViewPeer& peer) { peer.columnChanged(index); });
}

void ListView::setColumnIcon(int index, std::u16string_view icon) {
    if (column(index).icon == icon) return;
    columnAt(index).icon = icon;
    tellPeer([index](ListViewPeer& peer) { peer.columnChanged(index); });
}

void ListView::setColumnAlignment(int index, Alignment alignment) {
    if (column(index).alignment == alignment) return;
    columnAt(index).alignment = alignment;
    tellPeer([index](ListViewPeer& peer) { peer.columnChanged(index); });
}

void ListView::setColumnPosition(int index, int position) {
    if (position < 1 || position > columnCount()) throw std::out_of_range("no such column position");
    moveColumn(index, position);
    tellPeer([index](ListViewPeer& peer) { peer.columnChanged(index); });
}

void ListView::moveColumn(int index, int position) noexcept {
    const int from = column(index).position;
    for (Column& other : columns_) {
        if (other.position > from && other.position <= position)
            --other.position;
        else if (other.position < from && other.position >= position)
            ++other.position;
    }
    columnAt(index).position = position;
}

void ListView::userResizedColumn(int index, base::Twips width) noexcept { columnAt(index).width = width; }

void ListView::userMovedColumn(int index, int position) noexcept { moveColumn(index, position); }

base::Twips ListView::textWidth(base::CompactTextView text) const {
    return measurer_.width(fontNumber_, text);
}

base::Twips ListView::contentWidth(const RowContent& content, int column) const {
    if (const auto remembered = content.rememberedWidth(fontNumber_, column)) return *remembered;
    const base::Twips width = textWidth(content.columnText(column));
    content.rememberWidth(fontNumber_, column, width);
    return width;
}

base::Twips ListView::cellWidth(int position, int column) const {
    return contentWidth(row(position), column);
}

base::Twips ListView::widestCell(int column) const {
    Widest& widest = widest_[static_cast<std::size_t>(column - 1)];
    if (!widest.known) {
        widest.width = 0;
        for (int position = 1; position <= rowCount(); ++position)
            widest.width = std::max(widest.width, cellWidth(position, column));
        widest.known = true;
        metModels_.forget(); // of a row that has gone nothing is known in this column
    }
    return widest.width;
}

std::optional<base::Twips> ListView::rememberedWidestCell(int column) const noexcept {
    const Widest& widest = widest_[static_cast<std::size_t>(column - 1)];
    return widest.known ? std::optional(widest.width) : std::nullopt;
}

void ListView::growWidestBy(const RowContent& part, ColumnSet covered) {
    part.visitOwnColumns(fontNumber_, covered, [this](int column, base::CompactTextView text, float& width) {
        const auto index = static_cast<std::size_t>(column - 1);
        if (index >= widest_.size()) return;
        Widest& widest = widest_[index];
        if (!widest.known) return;
        if (width < 0) width = textWidth(text);
        widest.width = std::max(widest.width, width);
    });
    const RowContent* const model = part.model();
    const ColumnSet coveredThere = covered | part.ownColumns();
    if (!model || metModels_.has(model, coveredThere)) return;
    growWidestBy(*model, coveredThere);
    metModels_.note(model, coveredThere); // at last, as what measures may fail
}

void ListView::growWidest(std::span<const Entry> entries) {
    for (const Entry& entry : entries) growWidestBy(*entry.content, {});
}

void ListView::shrinkWidest(const RowContent& content) noexcept {
    for (int column = 1; column <= columnCount(); ++column) {
        Widest& widest = widest_[static_cast<std::size_t>(column - 1)];
        if (!widest.known) continue;
        const auto width = content.rememberedWidth(fontNumber_, column);
        if (!width || *width >= widest.width) widest.known = false;
    }
}

} // namespace cvlog::widgets
