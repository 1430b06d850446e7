// The list's automation face from outside: through IDispatch, as hosts and report generators call it.

#include "tests/windows/com_test.h"

#include <commctrl.h>

namespace cvlog::tests {
namespace {

class ListObject : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        control_ = create(L"CVLog3.CVLogControl");
        list_ = object(control_.Get(), L"Controls", {Variant(L"lvLog")});
        items_ = object(list_.Get(), L"ListItems");
        for (const wchar_t* text : {L"c", L"a", L"b"})
            EXPECT_EQ(call(items_.Get(), L"Add", {missing(), missing(), Variant(text)}).vt, VT_DISPATCH);
    }
    void TearDown() override {
        items_.Reset();
        list_.Reset();
        control_.Reset();
        ComTest::TearDown();
    }

    static Variant missing() {
        Variant value;
        value.vt = VT_ERROR;
        value.scode = DISP_E_PARAMNOTFOUND;
        return value;
    }
    static Variant call(IDispatch* owner, const wchar_t* name,
                        std::initializer_list<Variant> arguments = {}) {
        Variant result;
        EXPECT_EQ(callByName(owner, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, &result), S_OK);
        return result;
    }
    static ComPtr<IDispatch> object(IDispatch* owner, const wchar_t* name,
                                    std::initializer_list<Variant> arguments = {}) {
        const Variant result = call(owner, name, arguments);
        EXPECT_EQ(result.vt, VT_DISPATCH);
        return result.vt == VT_DISPATCH ? ComPtr<IDispatch>(result.pdispVal) : nullptr;
    }
    static std::wstring text(IDispatch* owner, const wchar_t* name,
                             std::initializer_list<Variant> arguments = {}) {
        const Variant result = call(owner, name, arguments);
        EXPECT_EQ(result.vt, VT_BSTR);
        return result.vt == VT_BSTR ? std::wstring(result.bstrVal, SysStringLen(result.bstrVal)) : L"";
    }
    static LONG number(IDispatch* owner, const wchar_t* name) {
        const Variant result = call(owner, name);
        EXPECT_EQ(result.vt, VT_I4);
        return result.lVal;
    }
    static HRESULT put(IDispatch* owner, const wchar_t* name, std::initializer_list<Variant> arguments,
                       WORD flags = DISPATCH_PROPERTYPUT) {
        return callByName(owner, name, flags, arguments);
    }
    /// The error number that a call raises, without its facility.
    static DWORD errorOf(IDispatch* owner, const wchar_t* name, Variant argument) {
        auto* member = const_cast<OLECHAR*>(name);
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(owner->GetIDsOfNames(IID_NULL, &member, 1, LOCALE_USER_DEFAULT, &id), S_OK);
        DISPPARAMS parameters = {&argument, nullptr, 1, 0};
        EXCEPINFO info = {};
        const HRESULT result =
            owner->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                          &parameters, nullptr, &info, nullptr);
        EXPECT_EQ(result, DISP_E_EXCEPTION);
        EXPECT_GT(SysStringLen(info.bstrDescription), 0U);
        for (BSTR part : {info.bstrSource, info.bstrDescription, info.bstrHelpFile}) SysFreeString(part);
        return static_cast<DWORD>(info.scode) & 0xFFFF;
    }
    ComPtr<IDispatch> item(LONG position) { return object(items_.Get(), L"Item", {Variant(position)}); }
    HWND window() { return reinterpret_cast<HWND>(static_cast<LONG_PTR>(number(list_.Get(), L"hWnd"))); }
    std::wstring shown(int row, int column) {
        wchar_t buffer[64] = {};
        LVITEMW wanted = {};
        wanted.iSubItem = column;
        wanted.pszText = buffer;
        wanted.cchTextMax = 64;
        SendMessageW(window(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&wanted));
        return buffer;
    }

    ComPtr<IDispatch> control_;
    ComPtr<IDispatch> list_;
    ComPtr<IDispatch> items_;
};

TEST_F(ListObject, TheControlsListIsFoundByName) {
    const ComPtr<IDispatch> controls = object(control_.Get(), L"Controls");
    EXPECT_EQ(number(controls.Get(), L"Count"), 17) << "the list and the menu";
    EXPECT_EQ(object(controls.Get(), L"Item", {Variant(L"LVLOG")}).Get(), list_.Get()) << "one object";
    EXPECT_EQ(errorOf(controls.Get(), L"Item", Variant(L"none")), 730U);
    EXPECT_EQ(errorOf(control_.Get(), L"Controls", Variant(L"none")), 730U);
    EXPECT_EQ(number(control_.Get(), L"hwnd"), number(list_.Get(), L"hWnd"));
}

TEST_F(ListObject, AChangeShowsInTheListsWindow) {
    EXPECT_EQ(SendMessageW(window(), LVM_GETITEMCOUNT, 0, 0), 3);
    EXPECT_EQ(shown(1, 0), L"a");
    const ComPtr<IDispatch> row = item(2);
    EXPECT_EQ(put(row.Get(), L"Text", {Variant(L"changed")}), S_OK);
    EXPECT_EQ(put(row.Get(), L"SubItems", {Variant(2L), Variant(L"method")}), S_OK);
    EXPECT_EQ(shown(1, 0), L"changed");
    EXPECT_EQ(shown(1, 2), L"method");
    EXPECT_EQ(text(row.Get(), L"SubItems", {Variant(2L)}), L"method");
    EXPECT_EQ(text(object(row.Get(), L"ListSubItems", {Variant(L"Method")}).Get(), L"Text"), L"method");
    call(items_.Get(), L"Clear");
    EXPECT_EQ(SendMessageW(window(), LVM_GETITEMCOUNT, 0, 0), 0);
}

TEST_F(ListObject, AnIndexOfAPutMayBeGivenByName) {
    const ComPtr<IDispatch> row = item(1);
    OLECHAR* names[] = {const_cast<OLECHAR*>(L"SubItems"), const_cast<OLECHAR*>(L"Index")};
    DISPID ids[2] = {};
    ASSERT_EQ(row->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), S_OK);
    Variant arguments[] = {Variant(L"by name"), Variant(3L)};
    DISPID named[] = {DISPID_PROPERTYPUT, ids[1]};
    DISPPARAMS parameters = {arguments, named, 2, 2};
    EXPECT_EQ(row->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                          nullptr, nullptr),
              S_OK);
    EXPECT_EQ(text(row.Get(), L"SubItems", {Variant(3L)}), L"by name");
}

TEST_F(ListObject, SortingAndSelectingReachTheWindow) {
    EXPECT_EQ(put(list_.Get(), L"Sorted", {Variant(1L)}), S_OK);
    EXPECT_EQ(shown(0, 0), L"a");
    EXPECT_EQ(put(list_.Get(), L"SortOrder", {Variant(1L)}), S_OK);
    EXPECT_EQ(shown(0, 0), L"c");
    Variant second;
    second.vt = VT_DISPATCH;
    second.pdispVal = item(2).Detach();
    EXPECT_EQ(put(list_.Get(), L"SelectedItem", {second}, DISPATCH_PROPERTYPUTREF), S_OK);
    EXPECT_EQ(SendMessageW(window(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 1);
    EXPECT_EQ(number(object(list_.Get(), L"SelectedItem").Get(), L"Index"), 2);
}

TEST_F(ListObject, HeadersAreThoseOfTheWindow) {
    const ComPtr<IDispatch> column = object(list_.Get(), L"ColumnHeaders", {Variant(L"Method")});
    EXPECT_EQ(number(column.Get(), L"Index"), 3);
    Variant width;
    width.vt = VT_R4;
    width.fltVal = 3000;
    EXPECT_EQ(put(column.Get(), L"Width", {width}), S_OK);
    const LRESULT wide = SendMessageW(window(), LVM_GETCOLUMNWIDTH, 2, 0);
    width.fltVal = 1500;
    EXPECT_EQ(put(column.Get(), L"Width", {width}), S_OK);
    EXPECT_EQ(SendMessageW(window(), LVM_GETCOLUMNWIDTH, 2, 0), wide / 2);
}

TEST_F(ListObject, AWrongIndexOrKeyHasItsOwnErrorNumber) {
    EXPECT_EQ(errorOf(items_.Get(), L"Item", Variant(4L)), 35600U);
    EXPECT_EQ(errorOf(items_.Get(), L"Item", Variant(L"none")), 35601U);
    EXPECT_EQ(errorOf(list_.Get(), L"ColumnHeaders", Variant(8L)), 35600U);
    EXPECT_EQ(errorOf(list_.Get(), L"ListItems", Variant(0L)), 35600U);
}

TEST_F(ListObject, WhatIsHeldBeyondTheControlFailsAndIsSafe) {
    const ComPtr<IDispatch> row = item(1);
    const ComPtr<IDispatch> cells = object(row.Get(), L"ListSubItems");
    control_.Reset();
    Variant result;
    for (const auto& [owner, name] : {std::pair(list_.Get(), L"hWnd"), std::pair(items_.Get(), L"Count"),
                                      std::pair(row.Get(), L"Text"), std::pair(cells.Get(), L"Count")})
        EXPECT_EQ(callByName(owner, name, DISPATCH_PROPERTYGET, {}, &result),
                  static_cast<HRESULT>(0x800A8B15));
}

} // namespace
} // namespace cvlog::tests
