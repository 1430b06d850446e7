#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench::report {

/// How a row of a log ended, by the key of its icon. A section is a row between others, such as a session's start.
enum class Outcome { kNone, kGood, kSuspect, kFailure, kBad, kCancel, kSection };

Outcome outcomeOf(std::wstring_view icon);
/// The outcome in a word; empty for none.
const wchar_t* wordOf(Outcome outcome);

struct Cell {
    std::wstring text;
    std::wstring kind; // what the cell's icon means, "" for nothing
};

struct Line {
    Outcome outcome = Outcome::kNone;
    bool isDetail = false; // belongs to the entry above
    std::vector<Cell> cells;
};

/// A list as it is shown: the visible columns in the order on the screen.
struct Table {
    std::wstring title;
    std::wstring made; // when
    std::vector<std::wstring> columns;
    std::vector<Line> lines;
};

/// The table as a page of its own: HTML with the style in it, for screens and for paper.
std::wstring makePage(const Table& table);

/// Text as HTML shows it, whatever is in it.
std::wstring escaped(std::wstring_view text);

} // namespace workbench::report
