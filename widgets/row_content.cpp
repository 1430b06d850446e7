#include "widgets/row_content.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::widgets {

namespace {

constexpr std::size_t kRowFields = 3;
constexpr std::size_t kCellFields = 4;

} // namespace

Cell* Row::cell(std::u16string_view key) noexcept {
    const auto found = std::find_if(cells.begin(), cells.end(), [key](const Cell& cell) {
        return base::equalsIgnoringCase(cell.key, key);
    });
    return found == cells.end() ? nullptr : &*found;
}

RowContent::RowContent(const Row& row, RowKeys keys) : keys_(std::move(keys)) {
    std::size_t length = row.text.size() + row.tag.size() + row.smallIcon.size();
    for (const Cell& cell : row.cells)
        length += cell.text.size() + cell.tag.size() + cell.icon.size() + cell.toolTip.size();
    characters_.reserve(length);
    ends_.reserve(kRowFields + kCellFields * row.cells.size());
    const auto append = [this](const std::u16string& text) {
        characters_ += text;
        ends_.push_back(static_cast<std::uint32_t>(characters_.size()));
    };
    append(row.text);
    append(row.tag);
    append(row.smallIcon);
    for (const Cell& cell : row.cells) {
        append(cell.text);
        append(cell.tag);
        append(cell.icon);
        append(cell.toolTip);
    }
}

RowContent::RowContent(const RowContent& original, std::size_t changed, std::u16string_view text)
    : widthsFont_(original.widthsFont_), sortKey_(original.sortKey_), keys_(original.keys_),
      ends_(original.ends_), widths_(original.widths_) {
    const std::u16string_view before = original.field(changed);
    const std::u16string_view all = original.characters_;
    const auto begin = static_cast<std::size_t>(before.data() - all.data());
    characters_.reserve(all.size() - before.size() + text.size());
    characters_ += all.substr(0, begin);
    characters_ += text;
    characters_ += all.substr(begin + before.size());
    const auto growth = static_cast<std::uint32_t>(text.size() - before.size()); // may wrap, and wraps back
    for (std::size_t i = changed; i < ends_.size(); ++i) ends_[i] += growth;
}

std::u16string_view RowContent::field(std::size_t index) const noexcept {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::u16string_view(characters_).substr(begin, ends_[index] - begin);
}

std::u16string_view RowContent::cellField(int cell, std::size_t part) const noexcept {
    if (cell < 1 || cell > cellCount()) return {};
    return field(kRowFields + static_cast<std::size_t>(cell - 1) * kCellFields + part);
}

std::u16string_view RowContent::cellKey(int cell) const noexcept {
    return cell < 1 || cell > cellCount() ? std::u16string_view()
                                          : (*keys_)[static_cast<std::size_t>(cell - 1)];
}

int RowContent::cellOf(std::u16string_view key) const noexcept {
    const auto found = std::find_if(keys_->begin(), keys_->end(),
                                    [key](const auto& own) { return base::equalsIgnoringCase(own, key); });
    return found == keys_->end() ? 0 : static_cast<int>(found - keys_->begin()) + 1;
}

std::u16string_view RowContent::columnText(int column) const noexcept {
    return column == 1 ? text() : cellText(column - 1);
}

Row RowContent::edit() const {
    Row row{std::u16string(text()), std::u16string(tag()), std::u16string(smallIcon()), {}};
    for (int i = 1; i <= cellCount(); ++i)
        row.cells.push_back({std::u16string(cellKey(i)), std::u16string(cellText(i)),
                             std::u16string(cellTag(i)), std::u16string(cellIcon(i)),
                             std::u16string(cellToolTip(i))});
    return row;
}

RowPtr RowContent::with(RowField changed, std::u16string_view text) const {
    RowPtr copy(new RowContent(*this, static_cast<std::size_t>(changed), text));
    if (changed == RowField::Text) copy->forgetText(1);
    return copy;
}

RowPtr RowContent::withCell(int cell, CellField changed, std::u16string_view text) const {
    const std::size_t first = kRowFields + static_cast<std::size_t>(cell - 1) * kCellFields;
    RowPtr copy(new RowContent(*this, first + static_cast<std::size_t>(changed), text));
    if (changed == CellField::Text) copy->forgetText(cell + 1);
    return copy;
}

std::optional<base::Twips> RowContent::rememberedWidth(std::uint32_t fontNumber, int column) const noexcept {
    const auto index = static_cast<std::size_t>(column - 1);
    if (widthsFont_ != fontNumber || index >= widths_.size() || widths_[index] < 0) return std::nullopt;
    return widths_[index];
}

void RowContent::rememberWidth(std::uint32_t fontNumber, int column, base::Twips width) const {
    if (widthsFont_ != fontNumber || widths_.empty()) {
        widths_.assign(static_cast<std::size_t>(cellCount()) + 1, -1.0F);
        widthsFont_ = fontNumber;
    }
    const auto index = static_cast<std::size_t>(column - 1);
    if (index < widths_.size()) widths_[index] = width;
}

void RowContent::forgetText(int column) const noexcept {
    const auto index = static_cast<std::size_t>(column - 1);
    if (index < widths_.size()) widths_[index] = -1.0F;
    if (sortKey(column)) sortKey_ = {};
}

void RowPtr::destroy(const RowContent* content) noexcept { delete content; }

RowPtr makeRow(const Row& row, RowKeys keys) {
    const bool fits = keys && std::equal(keys->begin(), keys->end(), row.cells.begin(), row.cells.end(),
                                         [](const auto& key, const Cell& cell) { return key == cell.key; });
    if (!fits) {
        auto own = std::make_shared<std::vector<std::u16string>>();
        for (const Cell& cell : row.cells) own->push_back(cell.key);
        keys = std::move(own);
    }
    return RowPtr(new RowContent(row, std::move(keys)));
}

} // namespace cvlog::widgets
