#include "widgets/row_content.h"

#include "base/text.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace cvlog::widgets {

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
    void append(const OwnText& own) noexcept {
        if (own.ascii.empty()) return append(own.text);
        base::widenAscii(own.ascii, begin_ + length_);
        length_ += own.ascii.size();
        *end_++ = static_cast<std::uint32_t>(length_);
    }

private:
    std::uint32_t* end_;
    char16_t* begin_;
    std::size_t length_ = 0;
};

std::size_t RowContent::sizeOf(std::size_t keys, std::size_t numbers, std::size_t characters) noexcept {
    static_assert(alignof(RowKeys) <= alignof(RowContent) && alignof(std::uint32_t) <= alignof(RowKeys) &&
                  sizeof(float) == sizeof(std::uint32_t) && alignof(RowContent) <= RowMemory::kStep);
    return sizeof(RowContent) + keys * sizeof(RowKeys) + numbers * sizeof(std::uint32_t) +
           characters * sizeof(char16_t);
}

RowContent* RowContent::allocate(RowKeys keys, std::size_t characters) {
    const std::size_t texts = kRowFields + kCellFields * keys->size();
    if (texts > kMostTexts) throw std::length_error("a row has too many cells");
    const RowMemory::Part part = RowMemory::takeAlone(sizeOf(1, texts + 1 + keys->size(), characters));
    return new (part.begin) RowContent(std::move(keys));
}

std::u16string_view RowContent::field(std::size_t index) const noexcept {
    std::size_t place = index;
    if (model_) {
        if (((own_ >> index) & 1U) == 0) return model_->field(index);
        place = countOf(ownBelow(index));
    }
    const std::size_t begin = place == 0 ? 0 : ends()[place - 1];
    return {characters() + begin, ends()[place] - begin};
}

std::u16string_view RowContent::cellField(int cell, std::size_t part) const noexcept {
    if (cell < 1 || cell > cellCount()) return {};
    return field(kRowFields + static_cast<std::size_t>(cell - 1) * kCellFields + part);
}

std::u16string_view RowContent::cellKey(int cell) const noexcept {
    return cell < 1 || cell > cellCount() ? std::u16string_view()
                                          : (*keys())[static_cast<std::size_t>(cell - 1)];
}

int RowContent::cellOf(std::u16string_view key) const noexcept {
    const auto& cells = *keys();
    const auto found = std::find_if(cells.begin(), cells.end(),
                                    [key](const auto& own) { return base::equalsIgnoringCase(own, key); });
    return found == cells.end() ? 0 : static_cast<int>(found - cells.begin()) + 1;
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
    std::size_t length = text.size();
    for (std::size_t i = 0; i < fieldCount(); ++i) length += i == changed ? 0 : field(i).size();
    RowPtr copy(allocate(keys(), length));
    Writer writer(const_cast<RowContent&>(*copy));
    for (std::size_t i = 0; i < fieldCount(); ++i) writer.append(i == changed ? text : field(i));
    copy->sortKey_ = sortKey_;
    if (widthsFont_ == 0) return copy;
    for (int column = 1; column <= cellCount() + 1; ++column)
        if (const auto width = rememberedWidth(widthsFont_, column))
            copy->rememberWidth(widthsFont_, column, *width);
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

void RowContent::rememberWidth(std::uint32_t fontNumber, int column, base::Twips width) const {
    if (column < 1 || static_cast<std::size_t>(column) > columnCount()) return;
    if (!ownsColumn(column)) return model_->rememberWidth(fontNumber, column, width);
    forgetOtherFont(fontNumber);
    widths()[widthIndex(column)] = width;
}

void RowContent::forgetText(int column) const noexcept {
    if (static_cast<std::size_t>(column) <= columnCount()) widths()[widthIndex(column)] = -1.0F;
    if (sortKey(column)) sortKey_ = {};
}

void RowPtr::destroy(const RowContent* content) noexcept {
    const RowMemory::Part part = {const_cast<RowContent*>(content), content->distance_};
    content->~RowContent();
    RowMemory::giveBack(part);
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

RowPtr makeRowLike(const RowPtr& model, std::span<const OwnText> texts, RowMemory* memory) {
    const bool isLikeAnother = static_cast<bool>(model->model_); // and has not too many fields
    if (!isLikeAnother && model->fieldCount() > RowContent::kMostFieldsWithModel) {
        RowPtr made = model;
        for (const OwnText& own : texts)
            made = made->withField(own.field, own.ascii.empty() ? own.text : base::fromUtf8(own.ascii));
        return made;
    }
    std::uint32_t own = 0;
    std::size_t numbers = texts.size();
    std::size_t length = 0;
    for (const OwnText& each : texts) {
        own |= 1U << each.field;
        numbers += RowContent::isShown(each.field) ? 1 : 0;
        length += each.size();
    }
    const std::size_t size = RowContent::sizeOf(0, numbers, length);
    const RowMemory::Part part = memory ? memory->take(size) : RowMemory::takeAlone(size);
    auto* const content = new (part.begin) RowContent(model, own, texts.size(), part.distance);
    RowPtr made(content);
    RowContent::Writer writer(*content);
    for (const OwnText& each : texts) writer.append(each);
    return made;
}

} // namespace cvlog::widgets
