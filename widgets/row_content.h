#pragma once

#include "base/compact_text_view.h"
#include "base/twips.h"
#include "widgets/row_memory.h"
#include "widgets/sort_key.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
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

class RowContent;

/// A counted reference to a row's content. Contents belong to one apartment, so the count is a plain number.
class RowPtr {
public:
    RowPtr() = default;
    explicit RowPtr(const RowContent* content) noexcept : content_(content) { acquire(); }
    RowPtr(const RowPtr& other) noexcept : content_(other.content_) { acquire(); }
    RowPtr(RowPtr&& other) noexcept : content_(std::exchange(other.content_, nullptr)) {}
    RowPtr& operator=(const RowPtr& other) noexcept { return *this = RowPtr(other); }
    RowPtr& operator=(RowPtr&& other) noexcept {
        const RowContent* const before = std::exchange(content_, std::exchange(other.content_, nullptr));
        if (before) release(before);
        return *this;
    }
    ~RowPtr() {
        if (content_) release(content_);
    }
    const RowContent& operator*() const noexcept { return *content_; }
    const RowContent* operator->() const noexcept { return content_; }
    const RowContent* get() const noexcept { return content_; }
    explicit operator bool() const noexcept { return content_ != nullptr; }

private:
    static void destroy(const RowContent* content) noexcept;
    inline void acquire() const noexcept;
    static inline void release(const RowContent* content) noexcept;
    const RowContent* content_ = nullptr;
};

/// The texts of a row itself, and those of each of its cells, in the order in which a content keeps them.
enum class RowField { Text, Tag, SmallIcon };
enum class CellField { Text, Tag, Icon, ToolTip };
inline constexpr std::size_t kRowFields = 3;
inline constexpr std::size_t kCellFields = 4;

/// A text that a row has of its own where it is like another one. Cells count from 1.
struct OwnText {
    OwnText(RowField part, base::CompactTextView own) noexcept
        : field(static_cast<std::size_t>(part)), text(own) {}
    OwnText(int cell, CellField part, base::CompactTextView own) noexcept
        : field(kRowFields + kCellFields * static_cast<std::size_t>(cell - 1) +
                static_cast<std::size_t>(part)),
          text(own) {}

    std::size_t field;
    base::CompactTextView text;
};

/// Some of the columns of rows that have a model: these have few.
class ColumnSet {
public:
    ColumnSet() = default;
    ColumnSet operator|(ColumnSet other) const noexcept { return ColumnSet(fields_ | other.fields_); }
    friend bool operator==(ColumnSet, ColumnSet) = default;

private:
    friend class RowContent;
    explicit ColumnSet(std::uint32_t fields) noexcept : fields_(fields) {}
    bool has(std::size_t field) const noexcept { return field < 32 && ((fields_ >> field) & 1U) != 0; }
    std::uint32_t fields_ = 0; // the fields that the columns show, a bit each
};

/// What a row shows. Immutable and shared by every list that shows the row; a list whose row changes gets its own
/// content. Remembers the measured widths of its texts for the font that measured last, and the key of the column that
/// was sorted by last. Lies with its texts in one piece of memory, so that a million rows cost little more than these.
/// Rows that are mostly alike share a model, which holds what they have in common, with the widths of that.
class RowContent {
public:
    RowContent(const RowContent&) = delete;
    RowContent& operator=(const RowContent&) = delete;

    base::CompactTextView text() const noexcept { return field(0); }
    base::CompactTextView tag() const noexcept { return field(1); }
    base::CompactTextView smallIcon() const noexcept { return field(2); }

    int cellCount() const noexcept { return static_cast<int>(keys()->size()); }
    /// The row that this one is like; null when it is like none.
    const RowContent* model() const noexcept { return model_.get(); }
    /// Whether the text of a column may differ from the model's.
    bool ownsColumn(int column) const noexcept {
        return !model_ || (textOf(column) < kMostFieldsWithModel && ((own_ >> textOf(column)) & 1U) != 0);
    }
    /// Cells count from 1, as the columns after the first do; one out of range is empty.
    std::u16string_view cellKey(int cell) const noexcept;
    base::CompactTextView cellText(int cell) const noexcept { return cellField(cell, 0); }
    base::CompactTextView cellTag(int cell) const noexcept { return cellField(cell, 1); }
    base::CompactTextView cellIcon(int cell) const noexcept { return cellField(cell, 2); }
    base::CompactTextView cellToolTip(int cell) const noexcept { return cellField(cell, 3); }
    /// 0 when there is no such cell.
    int cellOf(std::u16string_view key) const noexcept;

    /// The text shown in a column (1-based): the row's own in the first, a cell's in the others.
    base::CompactTextView columnText(int column) const noexcept;

    /// Calls `visit` with each column whose text is not the model's, or any text without a model, but for those in
    /// `covered`: with the column, the text, and the place where its width for this font is remembered, negative as long
    /// as it was not measured.
    template <class Visit>
    void visitOwnColumns(std::uint32_t fontNumber, ColumnSet covered, Visit&& visit) const {
        forgetOtherFont(fontNumber);
        const std::uint32_t* const end = ends();
        float* const width = widths();
        const void* const all = units();
        const auto visitText = [&](int column, std::size_t place, std::size_t widthPlace) {
            visit(column, textBetween(all, place == 0 ? 0 : end[place - 1], end[place]), width[widthPlace]);
        };
        if (model_) {
            std::uint32_t fields = own_ & kShown & ~covered.fields_;
            for (; fields != 0; fields &= fields - 1) {
                const auto field = static_cast<std::size_t>(std::countr_zero(fields));
                const std::uint32_t below = ownBelow(field);
                visitText(columnOf(field), countOf(below), countOf(below & kShown));
            }
        } else {
            int column = 1;
            for (std::size_t field = 0; field < endCount_; field = textOf(++column))
                if (!covered.has(field)) visitText(column, field, static_cast<std::size_t>(column - 1));
        }
    }
    /// The columns whose text may differ from the model's, of which there is one.
    ColumnSet ownColumns() const noexcept { return ColumnSet(own_ & kShown); }

    const RowKeys& keys() const noexcept {
        const RowContent* owner = this;
        while (owner->model_) owner = owner->model_.get();
        return *owner->ownKeys();
    }

    /// A copy for editing.
    Row edit() const;
    /// A copy with one text changed. It shares the keys and remembers what is known of all other texts.
    RowPtr with(RowField field, base::CompactTextView text) const;
    /// The same for a cell that is there.
    RowPtr withCell(int cell, CellField field, base::CompactTextView text) const;

    /// The remembered width of a column's text, or nothing when this font has not measured it.
    std::optional<base::Twips> rememberedWidth(std::uint32_t fontNumber, int column) const noexcept {
        if (column < 1 || static_cast<std::size_t>(column) > columnCount()) return std::nullopt;
        const RowContent* owner = this;
        while (!owner->ownsColumn(column)) owner = owner->model_.get();
        if (owner->widthsFont_ != fontNumber) return std::nullopt;
        const float width = owner->widths()[owner->widthIndex(column)];
        return width < 0 ? std::nullopt : std::optional(width);
    }
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
    friend RowPtr makeRowLike(const RowPtr& model, std::span<const OwnText> texts, RowMemory* memory);
    struct Extent;
    class Writer;

    RowContent(RowKeys keys, bool inBytes) noexcept
        : endCount_((kRowFields + kCellFields * keys->size()) & kMostTexts), inBytes_(inBytes), distance_(0) {
        new (ownKeys()) RowKeys(std::move(keys));
    }
    RowContent(const RowPtr& model, std::uint32_t own, std::size_t endCount, bool inBytes,
               std::uint32_t distance) noexcept
        : own_(own), endCount_(endCount & kMostTexts), inBytes_(inBytes),
          distance_(distance & (RowMemory::kMostSteps)), model_(model) {}
    ~RowContent() {
        if (!model_) std::destroy_at(ownKeys());
    }

    /// A content with room for texts of this extent, which are still to be written. Throws std::length_error when there
    /// are more cells than any row has.
    static RowContent* allocate(RowKeys keys, Extent extent);
    static std::size_t sizeOf(std::size_t keys, std::size_t numbers, Extent extent) noexcept;
    RowPtr withField(std::size_t field, base::CompactTextView text) const;
    void forgetText(int column) const noexcept;
    void forgetOtherFont(std::uint32_t fontNumber) const noexcept {
        if (widthsFont_ == fontNumber) return;
        float* width = widths();
        for (std::size_t left = widthCount(); left > 0; --left) *width++ = -1.0F;
        widthsFont_ = fontNumber;
    }
    base::CompactTextView field(std::size_t index) const noexcept;
    base::CompactTextView cellField(int cell, std::size_t part) const noexcept;

    static constexpr std::size_t textOf(int column) noexcept { // the field that a column shows
        return column == 1 ? 0 : kRowFields + kCellFields * static_cast<std::size_t>(column - 2);
    }
    static constexpr int columnOf(std::size_t shownField) noexcept {
        return shownField == 0 ? 1 : static_cast<int>((shownField - kRowFields) / kCellFields) + 2;
    }
    static constexpr std::size_t kMostFieldsWithModel = 32; // as many as `own_` has bits
    static constexpr std::uint32_t kMostTexts = ~std::uint32_t{0} >> (RowMemory::kDistanceBits + 1);
    /// The fields that columns show, a bit each.
    static constexpr std::uint32_t kShown = 0x8888'8889;
    static constexpr bool isShown(std::size_t field) noexcept { return ((kShown >> field) & 1U) != 0; }
    std::size_t fieldCount() const noexcept { return kRowFields + kCellFields * keys()->size(); }
    std::size_t columnCount() const noexcept { return 1 + keys()->size(); }
    // There are few: faster than what counts all bits where the processor is not told to.
    static constexpr std::size_t countOf(std::uint32_t fields) noexcept {
        std::size_t count = 0;
        for (; fields != 0; fields &= fields - 1U) ++count;
        return count;
    }
    std::uint32_t ownBelow(std::size_t field) const noexcept { return own_ & ((1U << field) - 1U); }
    std::size_t widthIndex(int column) const noexcept { // for a column of its own
        return model_ ? countOf(ownBelow(textOf(column)) & kShown) : static_cast<std::size_t>(column - 1);
    }

    std::size_t widthCount() const noexcept {
        return model_ ? countOf(own_ & kShown) : 1 + (endCount_ - kRowFields) / kCellFields;
    }

    // What follows the object in its memory, for the fields of its own.
    RowKeys* ownKeys() const noexcept { // not with a model, whose keys are the row's
        return reinterpret_cast<RowKeys*>(const_cast<RowContent*>(this + 1));
    }
    std::uint32_t* ends() const noexcept { // where each text ends
        return reinterpret_cast<std::uint32_t*>(ownKeys() + (model_ ? 0 : 1));
    }
    float* widths() const noexcept { // of the shown texts; negative: not measured
        return reinterpret_cast<float*>(ends() + endCount_);
    }
    void* units() const noexcept { return widths() + widthCount(); } // all texts, one after another
    base::CompactTextView textBetween(const void* all, std::size_t begin, std::size_t end) const noexcept {
        if (inBytes_) return std::string_view(static_cast<const char*>(all) + begin, end - begin);
        return std::u16string_view(static_cast<const char16_t*>(all) + begin, end - begin);
    }

    mutable std::uint32_t references_ = 0;
    mutable std::uint32_t widthsFont_ = 0; // none yet
    mutable SortKeyPtr sortKey_;           // near the front: a search in a sorted list reads nothing else
    std::uint32_t own_ = 0;                // with a model: the fields that are not as there
    std::uint32_t endCount_ : 31 - RowMemory::kDistanceBits; // how many texts are its own
    std::uint32_t inBytes_ : 1;                              // its texts are all ASCII
    std::uint32_t distance_ : RowMemory::kDistanceBits;      // where it lies in its piece of memory
    RowPtr model_;
};

void RowPtr::acquire() const noexcept {
    if (content_) ++content_->references_;
}

void RowPtr::release(const RowContent* content) noexcept {
    if (--content->references_ == 0) destroy(content);
}

/// The finished content of a row. It shares `keys` when these are the row's, else it gets its own.
RowPtr makeRow(const Row& row, RowKeys keys);
inline RowPtr makeRow(const Row& row) { return makeRow(row, nullptr); }
/// A row without cells.
RowPtr makeRow(std::u16string_view text, std::u16string_view tag, std::u16string_view smallIcon);

/// The content of a row that is like another one but for these texts, which come in the order of their places. Rows that
/// are made one after another, and go together, are cheaper side by side in a memory.
RowPtr makeRowLike(const RowPtr& model, std::span<const OwnText> texts, RowMemory* memory = nullptr);

} // namespace cvlog::widgets
