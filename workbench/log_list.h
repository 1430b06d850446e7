#pragma once

#include <windows.h>

#include "workbench/variant.h"

namespace workbench {

/// A log control's list by its automation face, as a host works with it. Rows and columns count from 1.
class LogList {
public:
    explicit LogList(IDispatch* control);

    HWND window() const;
    IDispatch* object() const { return list_.Get(); }
    long rowCount() const;
    ComPtr<IDispatch> row(long index) const;
    /// The selected row, 0 when there is none.
    long selected() const;
    /// Selects this row and no other; 0 selects none.
    void select(long index) const;
    bool isMessage(long index) const;
    /// The object that the row, or the entry of a message, was reported with.
    std::wstring objectOf(long index) const;
    /// "" when the row has no errors file.
    std::wstring errorsFileOf(long index) const;
    std::wstring cell(long index, const wchar_t* column) const;

    long columnCount() const;
    ComPtr<IDispatch> column(long index) const;
    /// The place of a column's header in the list's window.
    POINT headerPoint(long index) const;

private:
    ComPtr<IDispatch> list_;
};

} // namespace workbench
