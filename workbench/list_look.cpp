#include "workbench/list_look.h"

#include <commctrl.h>

#include "workbench/com_call.h"
#include "workbench/failure.h"

namespace workbench {

namespace {

constexpr const wchar_t* kPart = L" | ";

/// What a list says that may have nothing there, such as the icon of a header without one.
std::wstring textOr(IDispatch* object, const wchar_t* property) {
    const Variant value = get(object, property);
    return value.isEmptyResult() ? std::wstring() : value.text();
}

std::wstring shownCell(HWND list, int row, int column) {
    wchar_t text[512] = L"";
    LVITEMW cell{};
    cell.mask = LVIF_TEXT | LVIF_IMAGE;
    cell.iItem = row;
    cell.iSubItem = column;
    cell.pszText = text;
    cell.cchTextMax = static_cast<int>(std::size(text));
    cell.iImage = -1;
    SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&cell));
    return std::wstring(text) + L"#" + std::to_wstring(cell.iImage);
}

std::wstring shownHeader(HWND list, int column) {
    const HWND header = ListView_GetHeader(list);
    wchar_t text[256] = L"";
    HDITEMW shown{};
    shown.mask = HDI_TEXT | HDI_IMAGE | HDI_FORMAT | HDI_ORDER;
    shown.pszText = text;
    shown.cchTextMax = static_cast<int>(std::size(text));
    SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&shown));
    const bool hasImage = shown.fmt & HDF_IMAGE;
    return std::wstring(text) + L"#" + std::to_wstring(hasImage ? shown.iImage : -1) + L"@" +
           std::to_wstring(shown.iOrder);
}

} // namespace

ListLook::ListLook(IDispatch* control) {
    const LogList list(control);
    lines_.push_back(L"sorted " + textOr(list.object(), L"Sorted") + L" by " +
                     textOr(list.object(), L"SortKey") + L" order " + textOr(list.object(), L"SortOrder"));
    readColumns(list);
    readRows(list);
}

void ListLook::readColumns(const LogList& list) {
    for (long i = 1; i <= list.columnCount(); ++i) {
        const ComPtr<IDispatch> column = list.column(i);
        const bool shown = get(column.Get(), L"Width").number() > 0;
        lines_.push_back(L"column " + textOr(column.Get(), L"Text") + kPart + textOr(column.Get(), L"Icon") +
                         kPart + textOr(column.Get(), L"Position") + (shown ? L"" : L" hidden") + kPart +
                         shownHeader(list.window(), static_cast<int>(i - 1)));
    }
}

void ListLook::readRows(const LogList& list) {
    const long columns = list.columnCount();
    const long rows = list.rowCount();
    const auto shownRows = static_cast<long>(SendMessageW(list.window(), LVM_GETITEMCOUNT, 0, 0));
    lines_.push_back(std::to_wstring(rows) + L" rows, " + std::to_wstring(shownRows) + L" shown");
    for (long i = 1; i <= rows; ++i) {
        const ComPtr<IDispatch> row = list.row(i);
        const ComPtr<IDispatch> cells = get(row.Get(), L"ListSubItems").object();
        std::wstring line = L"row " + std::to_wstring(i) + L": " + textOr(row.Get(), L"Text") + L"#" +
                            textOr(row.Get(), L"SmallIcon");
        for (long cell = 1; cell <= get(cells.Get(), L"Count").integer(); ++cell) {
            const ComPtr<IDispatch> found = item(cells.Get(), cell).object();
            line += kPart + textOr(found.Get(), L"Text") + L"#" + textOr(found.Get(), L"ReportIcon");
        }
        for (int column = 0; column < columns; ++column) {
            line += kPart + shownCell(list.window(), static_cast<int>(i - 1), column);
        }
        lines_.push_back(std::move(line));
    }
}

std::wstring ListLook::differenceFrom(const ListLook& other) const {
    for (size_t i = 0; i < lines_.size() && i < other.lines_.size(); ++i) {
        if (lines_[i] != other.lines_[i]) {
            return lines_[i] + L" <> " + other.lines_[i];
        }
    }
    return lines_.size() == other.lines_.size() ? L"" : L"one list has more rows";
}

} // namespace workbench
