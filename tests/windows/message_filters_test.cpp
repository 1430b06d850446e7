// The filter that sees the messages of menus before the menus do.

#include "platform/win32/message_filters.h"

#include "platform/win32/windows_headers.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

class Win32MessageFilter : public testing::Test {
protected:
    MessageFilters filters_;
};

TEST_F(Win32MessageFilter, SeesAndTakesMessagesUntilItEnds) {
    MSG message{};
    message.message = WM_KEYDOWN;
    message.wParam = VK_F1;
    std::vector<std::uint64_t> seen;
    auto filter = filters_.install([&](const ports::FilteredMessage& one) {
        seen.push_back(one.parameter);
        EXPECT_EQ(one.source, ports::kFromMenu);
        return one.parameter == VK_F1;
    });
    EXPECT_TRUE(CallMsgFilterW(&message, MSGF_MENU));
    message.wParam = VK_F2;
    EXPECT_FALSE(CallMsgFilterW(&message, MSGF_MENU)) << "passed on";
    EXPECT_THROW(filters_.install([](const ports::FilteredMessage&) { return true; }), std::logic_error);
    filter.reset();
    EXPECT_FALSE(CallMsgFilterW(&message, MSGF_MENU));
    EXPECT_EQ(seen, (std::vector<std::uint64_t>{VK_F1, VK_F2}));
}

TEST_F(Win32MessageFilter, SaysWhetherAMessageIsOfAMenu) {
    MSG message{};
    message.message = WM_KEYDOWN;
    std::vector<int> sources;
    const auto filter = filters_.install([&](const ports::FilteredMessage& one) {
        sources.push_back(one.source);
        return false;
    });
    for (const int source : {MSGF_DIALOGBOX, MSGF_MENU, MSGF_SCROLLBAR}) CallMsgFilterW(&message, source);
    EXPECT_EQ(sources, (std::vector<int>{MSGF_DIALOGBOX, MSGF_MENU, MSGF_SCROLLBAR}));
}

TEST_F(Win32MessageFilter, SurvivesAReceiverThatFailsOrEndsIt) {
    MSG message{};
    message.message = WM_KEYDOWN;
    std::unique_ptr<ports::MessageFilter> filter = filters_.install(
        [](const ports::FilteredMessage&) -> bool { throw std::runtime_error("the receiver's failure"); });
    EXPECT_FALSE(CallMsgFilterW(&message, MSGF_MENU));
    filter.reset();
    filter = filters_.install([&](const ports::FilteredMessage&) {
        filter.reset();
        return true;
    });
    EXPECT_TRUE(CallMsgFilterW(&message, MSGF_MENU));
    EXPECT_FALSE(CallMsgFilterW(&message, MSGF_MENU));
}

TEST_F(Win32MessageFilter, PassesMessagesToTheFilterBeforeAndItsAnswerBack) {
    constexpr LRESULT kAnswerBefore = 7;
    static int passed = 0;
    passed = 0;
    struct Before {
        static LRESULT CALLBACK procedure(int code, WPARAM wParam, LPARAM lParam) {
            ++passed;
            CallNextHookEx(nullptr, code, wParam, lParam);
            return kAnswerBefore;
        }
    };
    const HHOOK before = SetWindowsHookExW(WH_MSGFILTER, &Before::procedure, nullptr, GetCurrentThreadId());
    MSG message{};
    message.message = WM_KEYDOWN;
    const auto filter =
        filters_.install([](const ports::FilteredMessage& one) { return one.parameter == VK_F1; });
    EXPECT_EQ(CallMsgFilterW(&message, MSGF_MENU), kAnswerBefore);
    EXPECT_EQ(passed, 1);
    message.wParam = VK_F1;
    EXPECT_EQ(CallMsgFilterW(&message, MSGF_MENU), -1);
    EXPECT_EQ(passed, 1) << "what is taken goes no further";
    UnhookWindowsHookEx(before);
}

} // namespace
} // namespace cvlog::platform::win32
