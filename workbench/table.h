#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// A table file: UTF-8 text, a line a row, cells parted by tabs, the first line names the columns.
/// Empty lines are skipped; cells missing at a row's end are empty; the columns may stand in any order.
class Table {
public:
    /// Reads a file; throws Failure naming the file (and the line) when it is missing or broken.
    explicit Table(const std::wstring& path);

    /// One row, valid as long as its table.
    class Row {
    public:
        Row(const Table& table, size_t index) : table_(table), index_(index) {}

        /// The cell of a column, "" when the table has no such column.
        const std::wstring& text(std::wstring_view column) const;
        /// The same; throws Failure when the cell is empty.
        const std::wstring& required(std::wstring_view column) const;
        /// The same; throws Failure when the cell is no int32.
        long number(std::wstring_view column) const;
        /// Throws a Failure that points at this row.
        [[noreturn]] void fail(const std::wstring& problem) const;

    private:
        const Table& table_;
        size_t index_;
    };

    /// Throws Failure when one of the columns is missing.
    void requireColumns(std::initializer_list<const wchar_t*> columns) const;

    size_t rowCount() const { return lines_.size(); }
    Row row(size_t index) const { return Row(*this, index); }
    const std::vector<std::wstring>& columns() const { return columns_; }

private:
    struct Line {
        size_t number; // counted from 1
        std::vector<std::wstring> cells;
    };

    std::wstring path_;
    std::vector<std::wstring> columns_;
    std::vector<Line> lines_;
};

/// The bytes of a file; throws Failure when it cannot be read.
std::string readFile(const std::wstring& path);

} // namespace workbench
