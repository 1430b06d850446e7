#include "platform/win32/window_messages.h"
#include "platform/win32/windows_headers.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

/// A window of another program part, as a host's is.
class Win32WindowMessages : public testing::Test {
protected:
    Win32WindowMessages()
        : window_(
              CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr)) {}
    ~Win32WindowMessages() override {
        if (window_) DestroyWindow(window_);
    }
    std::int32_t handle() const {
        return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(window_));
    }
    /// The keys that wait for a window, or for the thread when there is none.
    static std::vector<MSG> waitingKeys(HWND window) {
        std::vector<MSG> keys;
        MSG message;
        while (PeekMessageW(&message, window, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE)) keys.push_back(message);
        return keys;
    }

    HWND window_;
    WindowMessages messages_;
};

TEST_F(Win32WindowMessages, QueueAKeyAsIfItHadBeenPressedInTheWindow) {
    ASSERT_NE(window_, nullptr);
    for (const auto code : std::initializer_list<std::int16_t>{112, 0, -1})
        messages_.postKeyDown(handle(), code);
    const std::vector<MSG> keys = waitingKeys(window_);
    ASSERT_EQ(keys.size(), 3U);
    for (const MSG& key : keys) {
        EXPECT_EQ(key.message, 256U);
        EXPECT_EQ(key.lParam, 1);
    }
    EXPECT_EQ(keys[0].wParam, 112U);
    EXPECT_EQ(keys[1].wParam, 0U);
    EXPECT_EQ(static_cast<std::intptr_t>(keys[2].wParam), -1);
}

TEST_F(Win32WindowMessages, FailForAWindowThatIsGone) {
    const std::int32_t gone = handle();
    DestroyWindow(std::exchange(window_, nullptr));
    EXPECT_THROW(messages_.postKeyDown(gone, 65), std::invalid_argument);
}

TEST_F(Win32WindowMessages, GoNeitherToTheThreadNorToAllWindows) {
    EXPECT_THROW(messages_.postKeyDown(0, 65), std::invalid_argument);
    EXPECT_THROW(messages_.postKeyDown(0xFFFF, 65), std::invalid_argument);
    EXPECT_TRUE(waitingKeys(nullptr).empty());
}

} // namespace
} // namespace cvlog::platform::win32
