// The clipboard as tests read it: other programs look into it after every change, and hold it while they do.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace cvlog::tests {

/// Asks for up to five seconds whether something is so.
template <typename Condition>
bool comesTrue(Condition condition) {
    for (int tries = 0; tries < 500; ++tries) {
        if (condition()) return true;
        Sleep(10);
    }
    return condition();
}

/// The clipboard, open as soon as nobody else has it, until the end of the scope.
class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND window = nullptr)
        : opened_(comesTrue([window] { return OpenClipboard(window) != FALSE; })) {
        EXPECT_TRUE(opened_) << "somebody holds the clipboard";
    }
    ~OpenedClipboard() {
        if (opened_) CloseClipboard();
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;

    /// The bytes of a format, as many as the system keeps; "none" when the format is not there.
    std::string bytesOf(UINT format) const {
        HANDLE memory = opened_ ? GetClipboardData(format) : nullptr;
        if (!memory) return "none";
        std::string bytes(static_cast<const char*>(GlobalLock(memory)), GlobalSize(memory));
        GlobalUnlock(memory);
        return bytes;
    }

private:
    bool opened_;
};

} // namespace cvlog::tests
