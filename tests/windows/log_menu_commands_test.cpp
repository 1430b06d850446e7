// The menu of a log that a host sees through COM, in the log's own windows.

#include "tests/windows/placement_fixture.h"
#include "tests/windows/real_input.h"

namespace cvlog::tests {
namespace {

class LogMenuCommands : public PlacementTest {
protected:
    /// Opens the list's menu by the mouse and chooses by a letter.
    static void choose(HWND list, WORD letter) {
        FromTheLoop inMenu([&] {
            if (!menuWindow()) return false;
            typeKey(letter);
            return true;
        });
        PostMessageW(list, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(30, 40));
        PostMessageW(list, WM_RBUTTONUP, 0, MAKELPARAM(30, 40));
        EXPECT_TRUE(takeMessagesUntil([&] { return inMenu.done() && !menuWindow(); }));
        takeMessages();
    }
    static ComPtr<IDispatch> child(IDispatch* owner, const wchar_t* member, const Variant& index) {
        Variant result;
        ComPtr<IDispatch> found;
        EXPECT_EQ(callByName(owner, member, DISPATCH_PROPERTYGET, {index}, &result), S_OK);
        if (result.vt == VT_DISPATCH) found = result.pdispVal;
        return found;
    }
};

TEST_F(LogMenuCommands, HideClosesTheWindowWhoseListShowsTheMenu) {
    floats();
    add();
    const HWND window = floating();
    choose(listIn(window), 'H');
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(is(L"Visible"));
}

TEST_F(LogMenuCommands, DockedTakesTheLogIntoTheHostsWindowAndBack) {
    floats();
    choose(listIn(floating()), 'K');
    EXPECT_TRUE(is(L"Docked"));
    EXPECT_EQ(floating(), nullptr);
    ASSERT_NE(host_->logView(), nullptr);
    choose(host_->logView()->list(), 'K');
    EXPECT_FALSE(is(L"Docked"));
    EXPECT_NE(floating(), nullptr);
}

TEST_F(LogMenuCommands, ItemsAreObjectsOfTheControl) {
    docks();
    IDispatch* control = host_->logView()->control().Get();
    const ComPtr<IDispatch> hide = child(control, L"Controls", Variant(L"mnuLogHide"));
    ASSERT_TRUE(hide);
    Variant caption;
    EXPECT_EQ(callByName(hide.Get(), L"Caption", DISPATCH_PROPERTYGET, {}, &caption), S_OK);
    EXPECT_STREQ(caption.bstrVal, L"&Hide");
    const ComPtr<IDispatch> columns = child(control, L"Controls", Variant(L"mnuColumn"));
    ASSERT_TRUE(columns);
    const ComPtr<IDispatch> column = child(columns.Get(), L"Item", Variant(2L));
    ASSERT_TRUE(column);
    Variant tag;
    EXPECT_EQ(callByName(column.Get(), L"Tag", DISPATCH_PROPERTYGET, {}, &tag), S_OK);
    EXPECT_STREQ(tag.bstrVal, L"Method");
}

TEST_F(LogMenuCommands, DoubleClickIsAMemberThatTakesTheControlItself) {
    docks();
    IDispatch* control = host_->logView()->control().Get();
    EXPECT_EQ(callByName(control, L"LogDblClick", DISPATCH_METHOD, {objectArgument(control)}), S_OK);
    EXPECT_NE(callByName(control, L"LogDblClick", DISPATCH_METHOD, {objectArgument(host_->workspace())}),
              S_OK);
}

} // namespace
} // namespace cvlog::tests
