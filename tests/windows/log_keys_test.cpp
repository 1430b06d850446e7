// The keys of the log in a real window, as a keyboard gives them.

#include "core/log_row_kind.h"
#include "tests/windows/log_window_fixture.h"
#include "tests/windows/open_clipboard.h"

#include <cstring>
#include <string>

namespace cvlog::platform::win32 {
namespace {

class Win32LogKeys : public LogWindowTest {
protected:
    void SetUp() override {
        LogWindowTest::SetUp();
        for (int i = 1; i <= 3; ++i) addEntry(u"");
        select(2);
    }
    widgets::ListView& list() { return control_->lvLog(); }
    void select(int row) {
        list().selectAll(false);
        list().select(row, true);
        list().focusRow(row);
        takeMessages();
    }
    void addChildAfter(int entry) {
        list().insert(entry + 1, widgets::makeRow({u"", std::u16string(core::kChildRowTag), u"", {}}));
    }
    static void typeWith(WORD modifier, WORD key) {
        pressKey(modifier, true);
        typeKey(key);
        pressKey(modifier, false);
        takeMessages();
    }
    static void type(WORD key) {
        typeKey(key);
        takeMessages();
    }
    static std::wstring clipboardText() {
        const std::string bytes = tests::OpenedClipboard().bytesOf(CF_UNICODETEXT);
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
        return text.substr(0, text.find(L'\0'));
    }
};

TEST_F(Win32LogKeys, DeleteTakesTheSelectedRow) {
    const widgets::RowId kept = list().idAt(3);
    type(VK_DELETE);
    EXPECT_EQ(list().rowCount(), 2);
    EXPECT_EQ(list().idAt(2), kept);
    EXPECT_EQ(SendMessageW(window().list(), LVM_GETITEMCOUNT, 0, 0), 2);
    type(VK_DELETE);
    EXPECT_EQ(list().rowCount(), 2) << "nothing is selected any more";
}

TEST_F(Win32LogKeys, CtrlCCopiesTheSelectedRowAndCAloneDoesNot) {
    services_.clipboard.setText(u"before");
    type('C');
    EXPECT_EQ(clipboardText(), L"before");
    typeWith(VK_CONTROL, 'C');
    EXPECT_EQ(clipboardText().substr(0, 20), L"2024-05-17 10:00:00\t");
    EXPECT_EQ(clipboardText().substr(clipboardText().size() - 2), L"\r\n");
}

TEST_F(Win32LogKeys, LeftLeadsFromAChildRowToItsEntryAndElsewhereNowhere) {
    addChildAfter(2);
    select(3);
    type(VK_LEFT);
    EXPECT_EQ(list().selectedRow(), 2);
    EXPECT_EQ(list().selectedCount(), 1);
    EXPECT_EQ(SendMessageW(window().list(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 1);
    type(VK_LEFT);
    EXPECT_EQ(list().selectedRow(), 2);
}

TEST_F(Win32LogKeys, GreyPlusGreyMinusAndCtrlEHaveNoEffectUntilAMenuForgetsThem) {
    list().clear();
    addEntry(u"C:\\x.errors");
    type(VK_ADD);
    EXPECT_EQ(globals_.commands.PendingCommand, u"Expand");
    type(VK_SUBTRACT);
    EXPECT_EQ(globals_.commands.PendingCommand, u"Collaps");
    typeWith(VK_CONTROL, 'E');
    EXPECT_EQ(globals_.commands.PendingCommand, u"ShowErrors");
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_EQ(list().row(1).cellTag(1), u"C:\\x.errors") << "opening would have taken it: the file is gone";
}

TEST_F(Win32LogKeys, SpaceOpensAnEntryButNotWithAModifier) {
    list().clear();
    addEntry(u"C:\\x.errors");
    typeWith(VK_SHIFT, VK_SPACE);
    EXPECT_EQ(list().row(1).cellTag(1), u"C:\\x.errors");
    select(1); // what Space does with modifiers is the system's
    type(VK_SPACE);
    EXPECT_EQ(list().row(1).cellTag(1), u"") << "opened: the file is gone";
}

} // namespace
} // namespace cvlog::platform::win32
