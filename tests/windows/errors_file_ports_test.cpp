// What errors files need of Windows: reading, the code page, the message queue.

#include "platform/win32/code_page.h"
#include "platform/win32/file_system.h"
#include "platform/win32/handles.h"
#include "platform/win32/message_pump.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/screens.h"
#include "platform/win32/wide_text.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace cvlog::platform::win32 {
namespace {

class Win32FileReader : public testing::Test {
protected:
    Win32FileReader() {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        path_ = std::wstring(folder) + L"cvlog reader test " + std::to_wstring(GetCurrentProcessId());
    }
    ~Win32FileReader() override { DeleteFileW(path_.c_str()); }

    HANDLE create(std::string_view bytes, DWORD share) {
        const HANDLE file = CreateFileW(path_.c_str(), GENERIC_WRITE, share, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD written = 0;
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        return file;
    }
    void write(std::string_view bytes) { const FileHandle file(create(bytes, 0)); }
    std::u16string path() const { return fromWide(path_); }
    static std::string readAll(ports::OpenFile& file) {
        std::string all;
        char block[4];
        while (const std::size_t count = file.read(block)) all.append(block, count);
        return all;
    }

    FileSystem files_;
    std::wstring path_;
};

TEST_F(Win32FileReader, ReadsAFileFromItsStartToItsEnd) {
    write("0123456789");
    const auto file = files_.open(path());
    EXPECT_EQ(file->size(), 10U);
    EXPECT_EQ(readAll(*file), "0123456789");
}

TEST_F(Win32FileReader, LetsOthersDeleteAFileThatItReads) {
    write("0123456789");
    const auto file = files_.open(path());
    EXPECT_TRUE(DeleteFileW(path_.c_str()));
    EXPECT_EQ(readAll(*file), "0123456789");
}

TEST_F(Win32FileReader, ReadsWhatAWriterHasOpenAndNoSizeBeyondThat) {
    const FileHandle writer(create("0123", FILE_SHARE_READ));
    ASSERT_TRUE(writer.isOpen());
    const auto file = files_.open(path());
    EXPECT_EQ(file->size(), 4U);
    DWORD written = 0;
    WriteFile(writer.get(), "45", 2, &written, nullptr);
    EXPECT_EQ(file->size(), 4U);
}

TEST_F(Win32FileReader, OpensNothingThatIsLockedMissingAFolderOrADevice) {
    EXPECT_THROW(files_.open(path()), std::runtime_error);
    {
        const FileHandle locked(create("x", 0));
        EXPECT_THROW(files_.open(path()), std::runtime_error);
    }
    EXPECT_NO_THROW(files_.open(path())) << "the lock went with its holder";
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    EXPECT_THROW(files_.open(fromWide(folder)), std::runtime_error);
    EXPECT_THROW(files_.open(u"NUL"), std::runtime_error);
    EXPECT_THROW(files_.open(u""), std::runtime_error);
    EXPECT_THROW(files_.open(std::u16string(u"C:\\a\0b", 6)), std::invalid_argument);
}

TEST(Win32CodePage, DecodesTheSystemsOwn) {
    CodePage codePage;
    std::u16string text = u"before";
    codePage.decode("", text);
    EXPECT_EQ(text, u"");
    codePage.decode(std::string_view("a\0\x01 z", 5), text);
    EXPECT_EQ(text, std::u16string(u"a\0\x01 z", 5));
}

TEST(Win32CodePage, DecodesWesternText) {
    if (GetACP() != 1252) GTEST_SKIP() << "another system code page: " << GetACP();
    CodePage codePage;
    std::u16string text;
    codePage.decode("\xE9\x80\xFF", text);
    EXPECT_EQ(text, u"\u00E9\u20AC\u00FF");
}

TEST(JapaneseWin32CodePage, KeepsCharactersOfTwoBytesWhole) {
    ASSERT_EQ(GetACP(), 932U);
    CodePage codePage;
    std::u16string text;
    codePage.decode("\x95\x5C\x8E\xA6 a", text);
    EXPECT_EQ(text, u"\u8868\u793A a");
    codePage.decode("a\x95", text);
    EXPECT_EQ(text.front(), u'a') << "half a character does no harm";
}

struct Received {
    int messages = 0;
    bool postsAgain = false;
};

LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) {
        auto* received = reinterpret_cast<Received*>(lParam);
        ++received->messages;
        if (received->postsAgain) PostMessageW(window, message, wParam, lParam);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class Win32MessagePump : public testing::Test {
protected:
    Win32MessagePump() {
        WNDCLASSW kind{};
        kind.lpfnWndProc = receive;
        kind.hInstance = GetModuleHandleW(nullptr);
        kind.lpszClassName = L"cvlog pump test";
        RegisterClassW(&kind);
        window_ = CreateWindowW(kind.lpszClassName, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                kind.hInstance, nullptr);
        pump_.yield();
    }
    ~Win32MessagePump() override {
        DestroyWindow(window_);
        UnregisterClassW(L"cvlog pump test", GetModuleHandleW(nullptr));
    }
    void post() { PostMessageW(window_, WM_APP, 0, reinterpret_cast<LPARAM>(&received_)); }

    MessagePump pump_;
    HWND window_;
    Received received_;
};

TEST_F(Win32MessagePump, RunsAllThatWaits) {
    for (int i = 0; i < 3; ++i) post();
    EXPECT_TRUE(pump_.yield());
    EXPECT_EQ(received_.messages, 3);
    EXPECT_TRUE(pump_.yield());
}

TEST_F(Win32MessagePump, IsNotHeldByWhoeverPostsWithoutEnd) {
    received_.postsAgain = true;
    post();
    EXPECT_TRUE(pump_.yield());
    EXPECT_GT(received_.messages, 100);
    received_.postsAgain = false;
    pump_.yield();
}

TEST_F(Win32MessagePump, LeavesTheWishToEndTheProgramForItsLoop) {
    PostQuitMessage(7);
    EXPECT_FALSE(pump_.yield());
    EXPECT_FALSE(pump_.yield()) << "it is waiting again";
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Win32MessagePump, TellsOfNoInputWhereThereIsNone) { EXPECT_FALSE(pump_.inputWaiting()); }

TEST_F(Win32MessagePump, TellsOfAKeyThatWaits) {
    SetWindowPos(window_, HWND_TOP, 50, 50, 200, 100, SWP_SHOWWINDOW);
    SetForegroundWindow(window_);
    SetFocus(window_);
    pump_.yield();
    INPUT key{};
    key.type = INPUT_KEYBOARD;
    key.ki.wVk = VK_SPACE;
    SendInput(1, &key, sizeof key);
    key.ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(1, &key, sizeof key);
    constexpr ULONGLONG kAmple = 30'000; // the input comes by way of the display
    const ULONGLONG end = GetTickCount64() + kAmple;
    bool told = false;
    while (!told && GetTickCount64() < end) told = pump_.inputWaiting();
    EXPECT_TRUE(told);
    pump_.yield();
}

TEST(Win32Screens, KnowWhereTheInsideOfAWindowBegins) {
    const HWND window = CreateWindowW(L"STATIC", L"", WS_POPUP | WS_BORDER, 40, 60, 200, 100, nullptr,
                                      nullptr, GetModuleHandleW(nullptr), nullptr);
    Screens screens;
    const int dpi = screenDpi();
    const RECT area =
        toPixels(screens.windowArea(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(window))), dpi);
    EXPECT_EQ(area.left, 41);
    EXPECT_EQ(area.top, 61);
    EXPECT_EQ(area.right - area.left, 200);
    EXPECT_EQ(area.bottom - area.top, 100);
    DestroyWindow(window);
    EXPECT_THROW(screens.windowArea(0x7FFFFFF0), std::runtime_error);
    EXPECT_EQ(toPixels(screens.scrollBarWidth(), dpi), GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_EQ(toPixels(screens.borderWidth(), dpi), GetSystemMetrics(SM_CXBORDER));
    EXPECT_EQ(toPixels(screens.borderHeight(), dpi), GetSystemMetrics(SM_CYBORDER));
}

} // namespace
} // namespace cvlog::platform::win32
