// The language of the user interface, in a process that was started with it.

#include "tests/windows/com_test.h"

#include <commctrl.h>

namespace cvlog::tests {
namespace {

class Language : public ComTest {
protected:
    std::wstring caption(int column) {
        const ComPtr<IDispatch> control = create(L"CVLog3.CVLogControl");
        Variant handle;
        EXPECT_EQ(callByName(control.Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &handle), S_OK);
        wchar_t text[64] = {};
        LVCOLUMNW item = {};
        item.mask = LVCF_TEXT;
        item.pszText = text;
        item.cchTextMax = 64;
        SendMessageW(reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.lVal)), LVM_GETCOLUMNW,
                     static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        return text;
    }
};

using EnglishLanguage = Language;
using JapaneseLanguage = Language;
using KoreanLanguage = Language;

TEST_F(EnglishLanguage, HeadsTheColumnsOfEveryOtherUser) {
    EXPECT_EQ(caption(0), L"Date");
    EXPECT_EQ(caption(3), L"Entity Type");
    EXPECT_EQ(caption(6), L"Message");
}

TEST_F(JapaneseLanguage, HeadsTheColumns) {
    ASSERT_EQ(PRIMARYLANGID(GetUserDefaultUILanguage()), LANG_JAPANESE);
    EXPECT_EQ(caption(0), L"\u65E5\u6642");
    EXPECT_NE(caption(6), L"Message");
}

TEST_F(KoreanLanguage, HeadsTheColumns) {
    ASSERT_EQ(PRIMARYLANGID(GetUserDefaultUILanguage()), LANG_KOREAN);
    EXPECT_EQ(caption(0), L"\uB0A0\uC9DC");
    EXPECT_NE(caption(6), L"Message");
}

} // namespace
} // namespace cvlog::tests
