// The control in the system's own ActiveX container window.

#include "tests/windows/ax_window.h"
#include "tests/windows/script_host.h"

#include <commctrl.h>

#include <optional>

namespace cvlog::tests {
namespace {

class SystemContainer : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        container_.emplace(L"CVLog3.CVLogControl", WS_OVERLAPPEDWINDOW | WS_VISIBLE, nullptr);
        ASSERT_TRUE(container_->control());
    }
    void TearDown() override {
        container_.reset();
        ComTest::TearDown();
    }
    HWND list() { return container_->list(); }
    HWND window() { return container_->window(); }

    std::optional<AxWindow> container_;
};

TEST_F(SystemContainer, TheListIsAVisibleChildThatFillsTheContainer) {
    ASSERT_TRUE(IsWindow(list()));
    EXPECT_TRUE(IsChild(window(), list()));
    EXPECT_TRUE(IsWindowVisible(list()));
    RECT container = {};
    RECT shown = {};
    GetClientRect(window(), &container);
    GetWindowRect(list(), &shown);
    EXPECT_EQ(shown.right - shown.left, container.right);
    EXPECT_EQ(shown.bottom - shown.top, container.bottom);
}

TEST_F(SystemContainer, TheListFollowsTheContainersSize) {
    SetWindowPos(window(), nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    RECT container = {};
    RECT shown = {};
    GetClientRect(window(), &container);
    GetWindowRect(list(), &shown);
    EXPECT_EQ(shown.right - shown.left, container.right);
    EXPECT_EQ(shown.bottom - shown.top, container.bottom);
}

TEST_F(SystemContainer, AReportBecomesARowOfTheListAndARecordOfTheDatabase) {
    const ProjectFolder project;
    const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project.path()));
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    ASSERT_TRUE(openDb(log.Get(), workspace.Get()));
    EXPECT_EQ(callByName(log.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}), S_OK);
    for (LONG code : {0L, 1L, -1L})
        EXPECT_EQ(callByName(log.Get(), L"Add", DISPATCH_METHOD,
                             {Variant(L"verify"), Variant(code), Variant(L"O1"), Variant(L"message")}),
                  S_OK);
    EXPECT_EQ(SendMessageW(list(), LVM_GETITEMCOUNT, 0, 0), 3);

    wchar_t text[64] = {};
    LVITEMW item = {};
    item.iSubItem = 5;
    item.pszText = text;
    item.cchTextMax = 64;
    SendMessageW(list(), LVM_GETITEMTEXTW, 2, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(text, L"RC -1");

    Variant database;
    EXPECT_EQ(callByName(log.Get(), L"LogDB", DISPATCH_PROPERTYGET, {}, &database), S_OK);
    ASSERT_EQ(database.vt, VT_DISPATCH);
    ASSERT_NE(database.pdispVal, nullptr);
    Variant rows;
    EXPECT_EQ(callByName(database.pdispVal, L"OpenRecordset", DISPATCH_METHOD,
                         {Variant(L"select * from LogInfo order by RecordNum")}, &rows),
              S_OK);
    ASSERT_EQ(rows.vt, VT_DISPATCH);
    Variant fields;
    EXPECT_EQ(callByName(rows.pdispVal, L"Fields", DISPATCH_PROPERTYGET, {Variant(L"ObjectName")}, &fields),
              S_OK);
    ASSERT_EQ(fields.vt, VT_DISPATCH);
    Variant name;
    EXPECT_EQ(callByName(fields.pdispVal, L"Value", DISPATCH_PROPERTYGET, {}, &name), S_OK);
    ASSERT_EQ(name.vt, VT_BSTR);
    EXPECT_STREQ(name.bstrVal, L"PAYROLL");
    EXPECT_EQ(callByName(log.Get(), L"CloseDB", DISPATCH_METHOD, {}), S_OK);
    EXPECT_EQ(SendMessageW(list(), LVM_GETITEMCOUNT, 0, 0), 0);
}

TEST_F(SystemContainer, TheListKeepsItsHandleWhenTheContainerGoesAndTheControlStays) {
    const HWND before = list();
    DestroyWindow(window());
    EXPECT_TRUE(IsWindow(before)) << "the handle is the list's key: it lives until the final release";
    EXPECT_EQ(list(), before);
    container_->releaseControl();
    EXPECT_FALSE(IsWindow(before));
}

} // namespace
} // namespace cvlog::tests
