#include "workbench/log_list.h"

#include <commctrl.h>

#include "workbench/com_call.h"
#include "workbench/text.h"

namespace workbench {

namespace {

ComPtr<IDispatch> subItem(IDispatch* row, const wchar_t* column) {
    return item(get(row, L"ListSubItems").object().Get(), column).object();
}

} // namespace

LogList::LogList(IDispatch* control)
    : list_(item(get(control, L"Controls").object().Get(), L"lvLog").object()) {}

HWND LogList::window() const {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(get(list_.Get(), L"hWnd").integer()));
}

long LogList::rowCount() const {
    return get(get(list_.Get(), L"ListItems").object().Get(), L"Count").integer();
}

ComPtr<IDispatch> LogList::row(long index) const {
    return item(get(list_.Get(), L"ListItems").object().Get(), index).object();
}

long LogList::selected() const {
    const ComPtr<IDispatch> row = get(list_.Get(), L"SelectedItem").object();
    return row ? get(row.Get(), L"Index").integer() : 0;
}

void LogList::select(long index) const {
    putReference(list_.Get(), L"SelectedItem", nullptr);
    if (index > 0) {
        putReference(list_.Get(), L"SelectedItem", row(index).Get());
        call(row(index).Get(), L"EnsureVisible");
    }
}

bool LogList::isMessage(long index) const {
    return sameName(get(row(index).Get(), L"Tag").text(), L"expansion");
}

std::wstring LogList::objectOf(long index) const {
    const ComPtr<IDispatch> found = row(index);
    return isMessage(index) ? get(subItem(found.Get(), L"ObjID").Get(), L"Tag").text()
                            : get(found.Get(), L"Tag").text();
}

std::wstring LogList::errorsFileOf(long index) const {
    return get(subItem(row(index).Get(), L"Message").Get(), L"Tag").text();
}

std::wstring LogList::cell(long index, const wchar_t* column) const {
    return get(subItem(row(index).Get(), column).Get(), L"Text").text();
}

long LogList::columnCount() const {
    return get(get(list_.Get(), L"ColumnHeaders").object().Get(), L"Count").integer();
}

ComPtr<IDispatch> LogList::column(long index) const {
    return item(get(list_.Get(), L"ColumnHeaders").object().Get(), index).object();
}

POINT LogList::headerPoint(long index) const {
    RECT area{};
    const HWND header = ListView_GetHeader(window());
    SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(index - 1), reinterpret_cast<LPARAM>(&area));
    return {area.left + 12, (area.top + area.bottom) / 2};
}

} // namespace workbench
