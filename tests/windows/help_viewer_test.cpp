// What the system's help program is told, by a window that stands in for it.

#include "platform/win32/help_viewer.h"

#include "platform/win32/windows_headers.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace cvlog::platform::win32 {
namespace {

/// What WinHelp sends to the help program's window.
struct HelpRequest {
    WORD size;
    WORD command;
    LONG data;
    LONG reserved;
    WORD fileAt;
    WORD dataAt;
};

/// The help program's window: the system looks for it by its class.
class HelpProgram {
public:
    HelpProgram() {
        told() = {};
        WNDCLASSW description{};
        description.lpfnWndProc = procedure;
        description.lpszClassName = kClass;
        description.hInstance = GetModuleHandleW(nullptr);
        RegisterClassW(&description);
        window_ = CreateWindowW(kClass, L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, description.hInstance,
                                nullptr);
    }
    ~HelpProgram() {
        DestroyWindow(window_);
        UnregisterClassW(kClass, GetModuleHandleW(nullptr));
    }
    HelpProgram(const HelpProgram&) = delete;
    HelpProgram& operator=(const HelpProgram&) = delete;

    struct Told {
        int times = 0;
        HWND owner = nullptr;
        int command = 0;
        LONG context = 0;
        std::string file;
    };
    static Told& told() {
        static Told all;
        return all;
    }

private:
    static constexpr const wchar_t* kClass = L"MS_WINHELP";

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_COPYDATA) return DefWindowProcW(window, message, wParam, lParam);
        const auto& sent = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        HelpRequest request{};
        std::memcpy(&request, sent.lpData, sizeof request);
        Told& now = told();
        ++now.times;
        now.owner = reinterpret_cast<HWND>(wParam);
        now.command = request.command;
        now.context = request.data;
        now.file = static_cast<const char*>(sent.lpData) + request.fileAt;
        return 1;
    }

    HWND window_;
};

TEST(Win32HelpViewer, TellsTheHelpProgramOwnerFileAndContext) {
    const HelpProgram program;
    const HWND owner =
        CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    HelpViewer viewer;
    viewer.showContext(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(owner)),
                       u"C:\\Prod\\Caf\u00E9.hlp", 1001);
    const HelpProgram::Told& told = HelpProgram::told();
    EXPECT_EQ(told.times, 1);
    EXPECT_EQ(told.owner, owner);
    EXPECT_EQ(told.command, HELP_CONTEXT);
    EXPECT_EQ(told.context, 1001);
    EXPECT_EQ(told.file, "C:\\Prod\\Caf\xE9.hlp") << "in the code page";
    viewer.showContext(0, u"x.hlp", -5);
    EXPECT_EQ(told.times, 2);
    EXPECT_EQ(told.owner, nullptr);
    EXPECT_EQ(told.context, -5);
    DestroyWindow(owner);
}

} // namespace
} // namespace cvlog::platform::win32
