#include "workbench/report/list_reader.h"

#include <algorithm>
#include <vector>

#include "workbench/com_call.h"
#include "workbench/text.h"

namespace workbench::report {

namespace {

constexpr const wchar_t* kDetailTag = L"expansion"; // of the rows below an open entry

struct Column {
    long index; // from 1; the first is the row's own text
    long position;
    std::wstring caption;
};

std::vector<Column> visibleColumns(IDispatch* list) {
    const ComPtr<IDispatch> headers = get(list, L"ColumnHeaders").object();
    const long count = get(headers.Get(), L"Count").integer();
    std::vector<Column> columns;
    for (long i = 1; i <= count; ++i) {
        const ComPtr<IDispatch> header = item(headers.Get(), i).object();
        if (get(header.Get(), L"Width").number() > 0) {
            columns.push_back(
                {i, get(header.Get(), L"Position").integer(), get(header.Get(), L"Text").text()});
        }
    }
    std::sort(columns.begin(), columns.end(),
              [](const Column& left, const Column& right) { return left.position < right.position; });
    return columns;
}

Cell readCell(IDispatch* row, IDispatch* cells, long cellCount, const Column& column) {
    if (column.index == 1) {
        return {get(row, L"Text").text(), {}};
    }
    if (column.index - 1 > cellCount) {
        return {};
    }
    const ComPtr<IDispatch> cell = item(cells, column.index - 1).object();
    Cell read{get(cell.Get(), L"Text").text(), get(cell.Get(), L"ReportIcon").text()};
    if (outcomeOf(read.kind) != Outcome::kNone) {
        read.kind.clear(); // the line says it in a word
    }
    return read;
}

Line readLine(IDispatch* row, const std::vector<Column>& columns) {
    Line line;
    line.outcome = outcomeOf(get(row, L"SmallIcon").text());
    line.isDetail = sameName(get(row, L"Tag").text(), kDetailTag);
    const ComPtr<IDispatch> cells = get(row, L"ListSubItems").object();
    const long cellCount = get(cells.Get(), L"Count").integer();
    for (const Column& column : columns) {
        line.cells.push_back(readCell(row, cells.Get(), cellCount, column));
    }
    return line;
}

} // namespace

bool readList(IDispatch* list, Table& table, const Progress& progress) {
    const std::vector<Column> columns = visibleColumns(list);
    for (const Column& column : columns) {
        table.columns.push_back(column.caption);
    }
    const ComPtr<IDispatch> rows = get(list, L"ListItems").object();
    const long count = get(rows.Get(), L"Count").integer();
    table.lines.reserve(static_cast<size_t>(std::max(count, 0L)));
    for (long i = 1; i <= count; ++i) {
        if (!progress(i - 1, count)) {
            return false;
        }
        table.lines.push_back(readLine(item(rows.Get(), i).object().Get(), columns));
    }
    return true;
}

} // namespace workbench::report
