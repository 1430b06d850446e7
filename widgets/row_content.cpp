#include "widgets/row_content.h"

#include "base/text.h"

#include <algorithm>
#include <new>

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

/// Fills a new content text by text.
class RowContent::Writer {
public:
    explicit Writer(RowContent& content) noexcept : end_(content.ends()), begin_(content.characters()) {}
    void append(std::u16string_view text) noexcept {
        std::copy(text.begin(), text.end(), begin_ + length_);
        length_ += text.size();
        *end_++ = static_cast<std::uint32_t>(length_);
    }

private:
    std::uint32_t* end_;
    char16_t* begin_;
    std::size_t length_ = 0;
};

RowContent* RowContent::allocate(RowKeys keys, std::size_t characters) {
    static_assert(sizeof(RowContent) % alignof(std::uint32_t) == 0 && sizeof(float) == sizeof(std::uint32_t));
    const std::size_t cells = keys->size();
    const std::size_t numbers = kRowFields + kCellFields * cells + 1 + cells;
    const std::size_t bytes =
        sizeof(RowContent) + numbers * sizeof(std::uint32_t) + characters * sizeof(char16_t);
    return new (::operator new(bytes)) RowContent(std::move(keys));
}

std::u16string_view RowContent::field(std::size_t index) const noexcept {
    const std::size_t begin = index == 0 ? 0 : ends()[index - 1];
    return {characters() + begin, ends()[index] - begin};
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

RowPtr RowContent::withField(std::size_t changed, std::u16string_view text) const {
    const std::size_t length = ends()[fieldCount() - 1] - field(changed).size() + text.size();
    RowPtr copy(allocate(keys_, length));
    Writer writer(const_cast<RowContent&>(*copy));
    for (std::size_t i = 0; i < fieldCount(); ++i) writer.append(i == changed ? text : field(i));
    copy->widthsFont_ = widthsFont_;
    copy->sortKey_ = sortKey_;
    if (widthsFont_ != 0) std::copy_n(widths(), columnCount(), copy->widths());
    return copy;
}

RowPtr RowContent::with(RowField changed, std::u16string_view text) const {
    RowPtr copy = withField(static_cast<std::size_t>(changed), text);
    if (changed == RowField::Text) copy->forgetText(1);
    return copy;
}

RowPtr RowContent::withCell(int cell, CellField changed, std::u16string_view text) const {
    const std::size_t first = kRowFields + static_cast<std::size_t>(cell - 1) * kCellFields;
    RowPtr copy = withField(first + static_cast<std::size_t>(changed), text);
    if (changed == CellField::Text) copy->forgetText(cell + 1);
    return copy;
}

std::optional<base::Twips> RowContent::rememberedWidth(std::uint32_t fontNumber, int column) const noexcept {
    const auto index = static_cast<std::size_t>(column - 1);
    if (widthsFont_ != fontNumber || index >= columnCount() || widths()[index] < 0) return std::nullopt;
    return widths()[index];
}

void RowContent::rememberWidth(std::uint32_t fontNumber, int column, base::Twips width) const {
    if (widthsFont_ != fontNumber) {
        std::fill_n(widths(), columnCount(), -1.0F);
        widthsFont_ = fontNumber;
    }
    const auto index = static_cast<std::size_t>(column - 1);
    if (index < columnCount()) widths()[index] = width;
}

void RowContent::forgetText(int column) const noexcept {
    const auto index = static_cast<std::size_t>(column - 1);
    if (index < columnCount()) widths()[index] = -1.0F;
    if (sortKey(column)) sortKey_ = {};
}

void RowPtr::destroy(const RowContent* content) noexcept {
    content->~RowContent();
    ::operator delete(const_cast<RowContent*>(content));
}

RowPtr makeRow(const Row& row, RowKeys keys) {
    const bool fits = keys && std::equal(keys->begin(), keys->end(), row.cells.begin(), row.cells.end(),
                                         [](const auto& key, const Cell& cell) { return key == cell.key; });
    if (!fits) {
        auto own = std::make_shared<std::vector<std::u16string>>();
        for (const Cell& cell : row.cells) own->push_back(cell.key);
        keys = std::move(own);
    }
    std::size_t length = row.text.size() + row.tag.size() + row.smallIcon.size();
    for (const Cell& cell : row.cells)
        length += cell.text.size() + cell.tag.size() + cell.icon.size() + cell.toolTip.size();
    RowContent* const content = RowContent::allocate(std::move(keys), length);
    RowPtr made(content);
    RowContent::Writer writer(*content);
    for (const std::u16string* text : {&row.text, &row.tag, &row.smallIcon}) writer.append(*text);
    for (const Cell& cell : row.cells)
        for (const std::u16string* text : {&cell.text, &cell.tag, &cell.icon, &cell.toolTip})
            writer.append(*text);
    return made;
}

RowPtr makeRow(std::u16string_view text, std::u16string_view tag, std::u16string_view smallIcon) {
    static const RowKeys kNoKeys = std::make_shared<const std::vector<std::u16string>>();
    RowContent* const content = RowContent::allocate(kNoKeys, text.size() + tag.size() + smallIcon.size());
    RowPtr made(content);
    RowContent::Writer writer(*content);
    for (const std::u16string_view field : {text, tag, smallIcon}) writer.append(field);
    return made;
}

} // namespace cvlog::widgets
