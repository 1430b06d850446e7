#pragma once

#include "base/failure.h"
#include "base/font.h"
#include "base/twips.h"
#include "ports/collator.h"
#include "ports/text_measurer.h"
#include "widgets/chunked_sequence.h"
#include "widgets/image_list.h"
#include "widgets/list_describer.h"
#include "widgets/list_view_peer.h"
#include "widgets/met_models.h"
#include "widgets/row_content.h"
#include "widgets/row_keys.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::widgets {

enum class SortOrder { Ascending = 0, Descending = 1 };
enum class Alignment { Left, Right, Center };

struct Column {
    std::u16string key;
    std::u16string caption;
    base::Twips width = 0; // 0: hidden
    int position = 0;      // display order, from 1
    std::u16string icon;   // key in the header icons, "" for none
    Alignment alignment = Alignment::Left;
    std::u16string tag = {}; // a note of the host's; shown nowhere
};

struct Colours {
    std::uint32_t back = 0x80000005; // system colour of window backgrounds
    std::uint32_t fore = 0x80000008; // system colour of window text
    friend bool operator==(const Colours&, const Colours&) = default;
};

/// A report list: rows, columns, selection, focus, sorting. Rows and columns count from 1; a position out of range is
/// a programming error. The content of rows is shared between lists; the order and the state of rows are a list's own.
class ListView {
public:
    /// Without a source of row numbers the list has its own.
    ListView(ports::Collator& collator, ports::TextMeasurer& measurer,
             std::shared_ptr<RowIds> rowIds = nullptr);
    ~ListView();
    ListView(const ListView&) = delete;
    ListView& operator=(const ListView&) = delete;

    /// The platform's side. Without one the list works all the same and is seen by nobody.
    void attach(std::unique_ptr<ListViewPeer> peer);
    ListViewPeer* peer() const noexcept { return peer_.get(); }
    /// Not owned; null while nobody listens.
    void setOwner(ListViewOwner* owner) noexcept { owner_ = owner; }
    ListViewOwner* owner() const noexcept { return owner_; }
    /// Null while nobody can say more about the rows than their texts.
    void setDescriber(std::shared_ptr<const ListDescriber> describer) { describer_ = std::move(describer); }
    const ListDescriber* describer() const noexcept { return describer_.get(); }
    /// 0 without a peer.
    std::int32_t windowHandle() const;

    // Rows. While the list is sorted, a new row takes its sorted place, behind equal ones, whatever place is asked for.
    int rowCount() const noexcept { return static_cast<int>(rows_.size()); }
    const RowContent& row(int position) const noexcept { return *entry(position).content; }
    const RowPtr& content(int position) const noexcept { return entry(position).content; }
    RowId insert(int position, RowPtr content, bool selected = false);
    /// A row of another list that shares this one's row numbers: it is the same row in both.
    void insertCopy(int position, const ListView& source, int sourcePosition);
    /// Rows that come to stand one below the other, where the list is not sorted. Takes the contents out of the run;
    /// answers the number of the last row.
    RowId insertRun(int position, std::span<RowPtr> contents);
    void insertCopies(int position, const ListView& source, int sourcePosition, int count);
    RowId append(RowPtr content, bool selected = false) {
        return insert(rowCount() + 1, std::move(content), selected);
    }
    void remove(int position);
    void clear();
    RowId idAt(int position) const noexcept { return entry(position).id; }
    /// 0 when the row is gone. A good guess makes the search short.
    int positionOf(RowId id, int guess = 0) const noexcept;
    /// A row may have a key in this list, unique without regard to case; most have none.
    std::u16string rowKey(int position) const { return rowKeys_.of(idAt(position)); }
    /// 0 when no row has the key.
    int rowOf(std::u16string_view key) const;
    /// False, and nothing is changed, when another row has the key. An empty one takes the row's key away.
    bool setRowKey(int position, std::u16string_view key);
    /// Gives a row the key "k" and a number above 0, whether another row has it or not: cheap for rows without end.
    void setNumberedKey(RowId row, std::int32_t number) { rowKeys_.setNumbered(row, number); }
    /// Gives the row other content, in this list only.
    void replace(int position, RowPtr content);
    void setCellTag(int position, std::u16string_view key, std::u16string_view tag);

    // Selection and focus.
    bool isSelected(int position) const noexcept { return entry(position).selected; }
    void select(int position, bool selected);
    void selectAll(bool selected);
    int selectedCount() const noexcept { return selectedCount_; }
    int focusedRow() const noexcept { return focused_; }
    void focusRow(int position);
    /// The focused row if it is selected, else the first selected one, else 0.
    int selectedRow() const noexcept;

    // Columns.
    void setColumns(std::vector<Column> columns);
    int columnCount() const noexcept { return static_cast<int>(columns_.size()); }
    const Column& column(int index) const noexcept { return columns_[static_cast<std::size_t>(index - 1)]; }
    /// 0 when there is no such column. Keys ignore case.
    int columnOf(std::u16string_view key) const noexcept;
    void setColumnWidth(int index, base::Twips width);
    void setColumnCaption(int index, std::u16string_view caption);
    void setColumnIcon(int index, std::u16string_view icon);
    void setColumnAlignment(int index, Alignment alignment);
    void setColumnTag(int index, std::u16string_view tag) { columnAt(index).tag = tag; }
    /// Moves a column to a display position; the columns between make room. Throws std::out_of_range.
    void setColumnPosition(int index, int position);

    // Sorting: by the text of one column. Switching it on sorts at once, as does each setting while it is on. A collator
    // that fails leaves the list as it was.
    bool sorted() const noexcept { return sorted_; }
    int sortKey() const noexcept { return sortKey_; } // 0-based column
    SortOrder sortOrder() const noexcept { return sortOrder_; }
    void setSorted(bool sorted);
    void setSort(int key, SortOrder order);

    // Looks.
    const base::Font& font() const noexcept { return font_; }
    void setFont(const base::Font& font);
    const Colours& colours() const noexcept { return colours_; }
    void setColours(const Colours& colours);
    bool enabled() const noexcept { return enabled_; }
    void setEnabled(bool enabled);
    const std::shared_ptr<const ImageList>& smallIcons() const noexcept { return smallIcons_; }
    void setSmallIcons(std::shared_ptr<const ImageList> icons);
    const std::shared_ptr<const ImageList>& headerIcons() const noexcept { return headerIcons_; }
    void setHeaderIcons(std::shared_ptr<const ImageList> icons);

    // Measuring, in the list's font.
    base::Twips textWidth(base::CompactTextView text) const;
    base::Twips cellWidth(int position, int column) const;
    /// The widest text of a column over all rows; 0 for none. Remembered until the widest row goes.
    base::Twips widestCell(int column) const;
    /// The same, or nothing when that is not remembered.
    std::optional<base::Twips> rememberedWidestCell(int column) const noexcept;

    void scrollTo(int position);
    void repaint();
    void takeFocus();

    // What the user did in the peer's window: changes the model without telling the peer back.
    void userSelected(int position, bool selected) noexcept;
    void userSelectedAll(bool selected) noexcept;
    void userFocused(int position) noexcept;
    void userResizedColumn(int index, base::Twips width) noexcept;
    void userMovedColumn(int index, int position) noexcept;

    /// Holds back the peer's work until the last batch of the list ends.
    class Batch {
    public:
        explicit Batch(ListView& list);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        ListView& list_;
    };

private:
    struct Entry {
        RowPtr content;
        RowId id = 0;
        bool selected = false;
    };
    using Entries = ChunkedSequence<Entry>;
    struct Widest {
        bool known = false;
        base::Twips width = 0;
    };

    Entry& entry(int position) noexcept { return rows_[static_cast<std::size_t>(position - 1)]; }
    const Entry& entry(int position) const noexcept { return rows_[static_cast<std::size_t>(position - 1)]; }
    Column& columnAt(int index) noexcept { return columns_[static_cast<std::size_t>(index - 1)]; }
    void insertEntries(int position, std::span<Entry> entries);
    void insertPart(int place, std::span<Entry> entries);
    void sortBy(int key, SortOrder order);
    void placeRows(int key, SortOrder order);
    int sortedPlace(const RowContent& content) const;
    void shareKey(const RowContent& content, const RowContent& other) const noexcept;
    void growWidest(std::span<const Entry> entries);
    void growWidestBy(const RowContent& part, ColumnSet covered);
    void shrinkWidest(const RowContent& content) noexcept;
    base::Twips contentWidth(const RowContent& content, int column) const;
    void moveColumn(int index, int position) noexcept;
    /// A screen that fails must not put this list out of step with the others: the list's own state is what counts.
    template <class Change>
    void tellPeer(Change&& change) const noexcept {
        // What it does may run foreign code, which may take the peer away: it stays until it is done.
        if (const std::shared_ptr<ListViewPeer> keep = peer_) base::ignoring([&] { change(*keep); });
    }

    ports::Collator& collator_;
    ports::TextMeasurer& measurer_;
    std::shared_ptr<ListViewPeer> peer_;
    ListViewOwner* owner_ = nullptr;
    std::shared_ptr<const ListDescriber> describer_;
    Entries rows_;
    RowKeyBook rowKeys_;
    std::shared_ptr<RowIds> rowIds_;
    struct {
        RowId id = 0;
        int place = 0;
    } lastPlaced_; // the row that came last, and where it came to stand
    int selectedCount_ = 0;
    int focused_ = 0;
    int batchDepth_ = 0;
    std::vector<Column> columns_;
    mutable std::vector<Widest> widest_;
    mutable MetModels metModels_; // what these show is in all widths of `widest_` that are known
    bool sorted_ = false;
    int sortKey_ = 0;
    SortOrder sortOrder_ = SortOrder::Ascending;
    bool inOrder_ = true; // the rows stand by key and order, whether the list is sorted or not
    base::Font font_;
    std::uint32_t fontNumber_;
    Colours colours_;
    bool enabled_ = true;
    std::shared_ptr<const ImageList> smallIcons_;
    std::shared_ptr<const ImageList> headerIcons_;
};

} // namespace cvlog::widgets
