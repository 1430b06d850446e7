#pragma once

#include "base/twips.h"
#include "widgets/sort_key.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cvlog::widgets {

/// A sub-item of a row: found by its key, never by its position on screen.
struct Cell {
    std::u16string key;
    std::u16string text;
    std::u16string tag;
    std::u16string icon; // key in the list's small icons, "" for none
    std::u16string toolTip;
    friend bool operator==(const Cell&, const Cell&) = default;
};

/// A row in the making: freely editable, in no list.
struct Row {
    std::u16string text;
    std::u16string tag;
    std::u16string smallIcon;
    std::vector<Cell> cells;

    /// Null when the row has no such cell. Keys are compared without regard to case.
    Cell* cell(std::u16string_view key) noexcept;
    friend bool operator==(const Row&, const Row&) = default;
};

/// The cell keys of a row, in order. Rows of the same shape share one.
using RowKeys = std::shared_ptr<const std::vector<std::u16string>>;

class RowPtr;

/// The texts of a row itself, and those of each of its cells, in the order in which a content keeps them.
enum class RowField { Text, Tag, SmallIcon };
enum class CellField { Text, Tag, Icon, ToolTip };

/// What a row shows. Immutable and shared by every list that shows the row; a list whose row changes gets its own
/// content. Remembers the measured widths of its texts for the font that measured last, and the key of the column that
/// was sorted by last. Lies with its texts in one piece of memory, so that a million rows cost little more than these.
class RowContent {
public:
    RowContent(const RowContent&) = delete;
    RowContent& operator=(const RowContent&) = delete;

    std::u16string_view text() const noexcept { return field(0); }
    std::u16string_view tag() const noexcept { return field(1); }
    std::u16string_view smallIcon() const noexcept { return field(2); }

    int cellCount() const noexcept { return static_cast<int>(keys_->size()); }
    /// Cells count from 1, as the columns after the first do; one out of range is empty.
    std::u16string_view cellKey(int cell) const noexcept;
    std::u16string_view cellText(int cell) const noexcept { return cellField(cell, 0); }
    std::u16string_view cellTag(int cell) const noexcept { return cellField(cell, 1); }
    std::u16string_view cellIcon(int cell) const noexcept { return cellField(cell, 2); }
    std::u16string_view cellToolTip(int cell) const noexcept { return cellField(cell, 3); }
    /// 0 when there is no such cell.
    int cellOf(std::u16string_view key) const noexcept;

    /// The text shown in a column (1-based): the row's own in the first, a cell's in the others.
    std::u16string_view columnText(int column) const noexcept;

    const RowKeys& keys() const noexcept { return keys_; }

    /// A copy for editing.
    Row edit() const;
    /// A copy with one text changed. It shares the keys and remembers what is known of all other texts.
    RowPtr with(RowField field, std::u16string_view text) const;
    /// The same for a cell that is there.
    RowPtr withCell(int cell, CellField field, std::u16string_view text) const;

    /// The remembered width of a column's text, or nothing when this font has not measured it.
    std::optional<base::Twips> rememberedWidth(std::uint32_t fontNumber, int column) const noexcept;
    void rememberWidth(std::uint32_t fontNumber, int column, base::Twips width) const;

    /// The remembered key of a column's text; null when another column or none was sorted by last.
    const SortKey* sortKey(int column) const noexcept {
        return sortKey_.get() && sortKey_->column() == column ? sortKey_.get() : nullptr;
    }
    void rememberSortKey(SortKeyPtr key) const noexcept { sortKey_ = std::move(key); }

private:
    friend class RowPtr;
    friend RowPtr makeRow(const Row& row, RowKeys keys);
    friend RowPtr makeRow(std::u16string_view text, std::u16string_view tag, std::u16string_view smallIcon);
    class Writer;

    explicit RowContent(RowKeys keys) noexcept : keys_(std::move(keys)) {}
    ~RowContent() = default;

    /// A content of these keys with room for so many characters; its texts are still to be written.
    static RowContent* allocate(RowKeys keys, std::size_t characters);
    RowPtr withField(std::size_t field, std::u16string_view text) const;
    void forgetText(int column) const noexcept;
    std::u16string_view field(std::size_t index) const noexcept;
    std::u16string_view cellField(int cell, std::size_t part) const noexcept;

    // What follows the object in its memory.
    std::size_t fieldCount() const noexcept { return 3 + 4 * keys_->size(); }
    std::size_t columnCount() const noexcept { return 1 + keys_->size(); }
    std::uint32_t* ends() const noexcept { // where each text ends
        return reinterpret_cast<std::uint32_t*>(const_cast<RowContent*>(this + 1));
    }
    float* widths() const noexcept { // by column; negative: not measured
        return reinterpret_cast<float*>(ends() + fieldCount());
    }
    char16_t* characters() const noexcept { // all texts, one after another
        return reinterpret_cast<char16_t*>(widths() + columnCount());
    }

    mutable std::uint32_t references_ = 0;
    mutable std::uint32_t widthsFont_ = 0; // none yet
    mutable SortKeyPtr sortKey_;           // near the front: a search in a sorted list reads nothing else
    RowKeys keys_;
};

/// A counted reference to a row's content. Contents belong to one apartment, so the count is a plain number.
class RowPtr {
public:
    RowPtr() = default;
    explicit RowPtr(const RowContent* content) noexcept : content_(content) { acquire(); }
    RowPtr(const RowPtr& other) noexcept : content_(other.content_) { acquire(); }
    RowPtr(RowPtr&& other) noexcept : content_(std::exchange(other.content_, nullptr)) {}
    RowPtr& operator=(RowPtr other) noexcept {
        std::swap(content_, other.content_);
        return *this;
    }
    ~RowPtr() {
        if (content_ && --content_->references_ == 0) destroy(content_);
    }
    const RowContent& operator*() const noexcept { return *content_; }
    const RowContent* operator->() const noexcept { return content_; }
    const RowContent* get() const noexcept { return content_; }
    explicit operator bool() const noexcept { return content_ != nullptr; }

private:
    static void destroy(const RowContent* content) noexcept;
    void acquire() const noexcept {
        if (content_) ++content_->references_;
    }
    const RowContent* content_ = nullptr;
};

/// The finished content of a row. It shares `keys` when these are the row's, else it gets its own.
RowPtr makeRow(const Row& row, RowKeys keys);
inline RowPtr makeRow(const Row& row) { return makeRow(row, nullptr); }
/// A row without cells.
RowPtr makeRow(std::u16string_view text, std::u16string_view tag, std::u16string_view smallIcon);

} // namespace cvlog::widgets
