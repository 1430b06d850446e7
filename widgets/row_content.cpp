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

/// What the texts of a row need together. They lie in bytes when all of them are ASCII.
struct RowContent::Extent {
    void add(base::CompactTextView text) noexcept {
        units += text.size();
        inBytes = inBytes && (text.inBytes() || base::isAscii(text.wide()));
    }
    std::size_t bytes() const noexcept { return inBytes ? units : units * sizeof(char16_t); }

    std::size_t units = 0;
    bool inBytes = true;
};

/// Fills a new content text by text.
class RowContent::Writer {
public:
    explicit Writer(RowContent& content) noexcept
        : end_(content.ends()), units_(content.units()), inBytes_(content.inBytes_) {}
    void append(base::CompactTextView text) noexcept {
        if (!inBytes_)
            appendTo(static_cast<char16_t*>(units_) + length_, text);
        else if (text.inBytes())
            text.bytes().copy(static_cast<char*>(units_) + length_, text.size());
        else
            base::narrowAscii(text.wide(), static_cast<char*>(units_) + length_);
        length_ += text.size();
        *end_++ = static_cast<std::uint32_t>(length_);
    }

private:
    static void appendTo(char16_t* place, base::CompactTextView text) noexcept {
        if (text.inBytes())
            base::widenAscii(text.bytes(), place);
        else
            text.wide().copy(place, text.size());
    }

    std::uint32_t* end_;
    void* units_;
    bool inBytes_;
    std::size_t length_ = 0;
};

std::size_t RowContent::sizeOf(std::size_t keys, std::size_t numbers, Extent extent) noexcept {
    static_assert(alignof(RowKeys) <= alignof(RowContent) && alignof(std::uint32_t) <= alignof(RowKeys) &&
                  sizeof(float) == sizeof(std::uint32_t) && alignof(RowContent) <= RowMemory::kStep);
    return sizeof(RowContent) + keys * sizeof(RowKeys) + numbers * sizeof(std::uint32_t) + extent.bytes();
}

RowContent* RowContent::allocate(RowKeys keys, Extent extent) {
    const std::size_t texts = kRowFields + kCellFields * keys->size();
    if (texts > kMostTexts) throw std::length_error("a row has too many cells");
    const RowMemory::Part part = RowMemory::takeAlone(sizeOf(1, texts + 1 + keys->size(), extent));
    return new (part.begin) RowContent(std::move(keys), extent.inBytes);
}

base::CompactTextView RowContent::field(std::size_t index) const noexcept {
    std::size_t place = index;
    if (model_) {
        if (((own_ >> index) & 1U) == 0) return model_->field(index);
        place = countOf(ownBelow(index));
    }
    return textBetween(units(), place == 0 ? 0 : ends()[place - 1], ends()[place]);
}

base::CompactTextView RowContent::cellField(int cell, std::size_t part) const noexcept {
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

base::CompactTextView RowContent::columnText(int column) const noexcept {
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

RowPtr RowContent::withField(std::size_t changed, base::CompactTextView text) const {
    Extent extent;
    for (std::size_t i = 0; i < fieldCount(); ++i) extent.add(i == changed ? text : field(i));
    RowPtr copy(allocate(keys(), extent));
    Writer writer(const_cast<RowContent&>(*copy));
    for (std::size_t i = 0; i < fieldCount(); ++i) writer.append(i == changed ? text : field(i));
    copy->sortKey_ = sortKey_;
    if (widthsFont_ == 0) return copy;
    for (int column = 1; column <= cellCount() + 1; ++column)
        if (const auto width = rememberedWidth(widthsFont_, column))
            copy->rememberWidth(widthsFont_, column, *width);
    return copy;
}

RowPtr RowContent::with(RowField changed, base::CompactTextView text) const {
    RowPtr copy = withField(static_cast<std::size_t>(changed), text);
    if (changed == RowField::Text) copy->forgetText(1);
    return copy;
}

RowPtr RowContent::withCell(int cell, CellField changed, base::CompactTextView text) const {
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
    std::vector<const std::u16string*> texts{&row.text, &row.tag, &row.smallIcon};
    for (const Cell& cell : row.cells)
        texts.insert(texts.end(), {&cell.text, &cell.tag, &cell.icon, &cell.toolTip});
    RowContent::Extent extent;
    for (const std::u16string* text : texts) extent.add(*text);
    RowContent* const content = RowContent::allocate(std::move(keys), extent);
    RowPtr made(content);
    RowContent::Writer writer(*content);
    for (const std::u16string* text : texts) writer.append(*text);
    return made;
}

RowPtr makeRow(std::u16string_view text, std::u16string_view tag, std::u16string_view smallIcon) {
    static const RowKeys kNoKeys = std::make_shared<const std::vector<std::u16string>>();
    RowContent::Extent extent;
    for (const std::u16string_view field : {text, tag, smallIcon}) extent.add(field);
    RowContent* const content = RowContent::allocate(kNoKeys, extent);
    RowPtr made(content);
    RowContent::Writer writer(*content);
    for (const std::u16string_view field : {text, tag, smallIcon}) writer.append(field);
    return made;
}

RowPtr makeRowLike(const RowPtr& model, std::span<const OwnText> texts, RowMemory* memory) {
    const bool isLikeAnother = static_cast<bool>(model->model_); // and has not too many fields
    if (!isLikeAnother && model->fieldCount() > RowContent::kMostFieldsWithModel) {
        RowPtr made = model;
        for (const OwnText& own : texts) made = made->withField(own.field, own.text);
        return made;
    }
    std::uint32_t own = 0;
    std::size_t numbers = texts.size();
    RowContent::Extent extent;
    for (const OwnText& each : texts) {
        own |= 1U << each.field;
        numbers += RowContent::isShown(each.field) ? 1 : 0;
        extent.add(each.text);
    }
    const std::size_t size = RowContent::sizeOf(0, numbers, extent);
    const RowMemory::Part part = memory ? memory->take(size) : RowMemory::takeAlone(size);
    auto* const content =
        new (part.begin) RowContent(model, own, texts.size(), extent.inBytes, part.distance);
    RowPtr made(content);
    RowContent::Writer writer(*content);
    for (const OwnText& each : texts) writer.append(each.text);
    return made;
}

} // namespace cvlog::widgets
