// What other programs find on the clipboard, and what happens when it is held or the text is too long.

#include "platform/win32/clipboard.h"

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "tests/windows/open_clipboard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

namespace cvlog::tests {
namespace {

std::string bytesOf(UINT format) { return OpenedClipboard().bytesOf(format); }

std::string unitsAsBytes(std::u16string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

std::string inCodePage(std::u16string_view text) {
    const std::wstring_view wide = platform::win32::wideView(text);
    std::string bytes(wide.size() * 4, '\0');
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

class ClipboardTest : public testing::Test {
protected:
    void SetUp() override {
        {
            const OpenedClipboard free;
        } // a desktop that has just come up holds it longer than a program waits
        clipboard.setText(u"before");
    }
    /// Both forms, each ended by a zero; the system may round their sizes up.
    static void expectText(std::u16string_view text) {
        using namespace std::string_literals;
        const std::string unicode = unitsAsBytes(text) + "\0\0"s;
        EXPECT_EQ(bytesOf(CF_UNICODETEXT).substr(0, unicode.size()), unicode);
        const std::string ansi = (text.empty() ? ""s : inCodePage(text)) + "\0"s;
        EXPECT_EQ(bytesOf(CF_TEXT).substr(0, ansi.size()), ansi);
    }
    platform::win32::Clipboard clipboard;
};

class ClipboardText : public ClipboardTest, public testing::WithParamInterface<std::u16string_view> {};

TEST_P(ClipboardText, IsThereInTheCodePageAndUnchanged) {
    clipboard.setText(GetParam());
    expectText(GetParam());
}

TEST_F(ClipboardTest, TakesTheCodePageFirstAndKeepsItBesideTheOther) {
    clipboard.setText(u"text");
    std::vector<UINT>
        formats; // in the order in which they came; those that the system makes of others come last
    {
        const OpenedClipboard opened;
        for (UINT format = EnumClipboardFormats(0); format != 0; format = EnumClipboardFormats(format))
            formats.push_back(format);
    }
    ASSERT_FALSE(formats.empty());
    EXPECT_EQ(formats.front(), UINT{CF_TEXT});
    EXPECT_EQ(std::count(formats.begin(), formats.end(), UINT{CF_UNICODETEXT}), 1);
}

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P(Texts, ClipboardText,
                         testing::Values(u""sv, u"a"sv, u"one\ttwo\r\n"sv,
                                         u"\uD55C\uAD6D\uC5B4 \uAE30\uB85D"sv, u"a\0b\0"sv, u"\0"sv,
                                         u"lone \xD800 surrogate"sv, u"\xD83D\xDE00 pair"sv, u"caf\u00E9"sv));

TEST_F(ClipboardTest, HoldsOneZeroUnitForAnEmptyText) {
    clipboard.setText(u"");
    EXPECT_EQ(bytesOf(CF_UNICODETEXT), std::string(2, '\0'));
    EXPECT_EQ(bytesOf(CF_TEXT), std::string(1, '\0'));
}

TEST_F(ClipboardTest, HoldsALongTextWhole) {
    std::u16string text;
    for (int i = 0; i < 500'000; ++i) text += static_cast<char16_t>(u'\u0100' + i % 0x5000);
    clipboard.setText(text);
    expectText(text);
}

TEST_F(ClipboardTest, ReplacesEverythingThatWasThere) {
    const UINT format = RegisterClipboardFormatW(L"CVLog test format");
    {
        const OpenedClipboard opened;
        ASSERT_TRUE(SetClipboardData(format, GlobalAlloc(GMEM_MOVEABLE, 4)));
    }
    ASSERT_TRUE(IsClipboardFormatAvailable(format));
    clipboard.setText(u"after");
    EXPECT_FALSE(IsClipboardFormatAvailable(format));
    expectText(u"after");
}

TEST_F(ClipboardTest, IsOwnedByNobodyAndClosedAfterwards) {
    clipboard.setText(u"text");
    EXPECT_TRUE(comesTrue([] { return GetOpenClipboardWindow() == nullptr; }));
    EXPECT_EQ(GetClipboardOwner(), nullptr) << "the window that owned it has gone";
    EXPECT_FALSE(CloseClipboard()) << "it is closed";
    expectText(u"text");
}

TEST_F(ClipboardTest, LeavesNoWindowsAndNoLocksBehind) {
    clipboard.setText(u"text");
    const DWORD before = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    for (int i = 0; i < 50; ++i) clipboard.setText(u"text");
    EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), before);
    const OpenedClipboard opened;
    EXPECT_EQ(GlobalFlags(GetClipboardData(CF_UNICODETEXT)) & GMEM_LOCKCOUNT, 0U);
}

/// Another thread that holds the clipboard until it is told to let go, as another program does.
class Holder {
public:
    Holder()
        : thread_([this] {
              const OpenedClipboard opened;
              std::unique_lock lock(mutex_);
              holding_ = true;
              changed_.notify_all();
              changed_.wait(lock, [this] { return !holding_; });
          }) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return holding_; });
    }
    ~Holder() {
        {
            const std::lock_guard lock(mutex_);
            holding_ = false;
        }
        changed_.notify_all();
        thread_.join();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool holding_ = false;
    std::thread thread_;
};

TEST_F(ClipboardTest, FailsAndChangesNothingWhileAnotherThreadHoldsIt) {
    {
        const Holder holder;
        EXPECT_THROW(clipboard.setText(u"after"), std::runtime_error);
    }
    expectText(u"before");
    clipboard.setText(u"after");
    expectText(u"after");
}

TEST_F(ClipboardTest, FailsAndLeavesItOpenForTheWindowThatHoldsIt) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    {
        const OpenedClipboard opened(window);
        EXPECT_THROW(clipboard.setText(u"after"), std::runtime_error);
        EXPECT_EQ(GetOpenClipboardWindow(), window);
    }
    expectText(u"before");
    DestroyWindow(window);
}

TEST_F(ClipboardTest, RefusesATextWhoseSizeTheSystemCannotTell) {
    if (sizeof(void*) == 4) GTEST_SKIP() << "no such text fits into the address space";
    // Reserved, not there: the text must be refused before it is read.
    const std::size_t units = std::size_t{1} << 31;
    void* nothing = VirtualAlloc(nullptr, units * sizeof(char16_t), MEM_RESERVE, PAGE_NOACCESS);
    ASSERT_TRUE(nothing);
    for (const std::size_t size : {units, units / 2, units / 2 - 1})
        EXPECT_THROW(clipboard.setText({static_cast<const char16_t*>(nothing), size}), std::length_error);
    VirtualFree(nothing, 0, MEM_RELEASE);
    expectText(u"before");
}

class KoreanClipboard : public ClipboardTest {};

TEST_F(KoreanClipboard, HoldsKoreanTextInTheKoreanCodePage) {
    ASSERT_EQ(GetACP(), 949U);
    clipboard.setText(u"\uD55C\uAD6D\uC5B4");
    EXPECT_EQ(bytesOf(CF_TEXT).substr(0, 7), std::string("\xC7\xD1\xB1\xB9\xBE\xEE\0", 7));
    expectText(u"\uD55C\uAD6D\uC5B4");
}

} // namespace
} // namespace cvlog::tests
