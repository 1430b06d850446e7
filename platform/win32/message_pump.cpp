#include "platform/win32/message_pump.h"

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

namespace {

constexpr std::uint64_t kMillisecondsBetweenQuestions = 10;
constexpr int kMostMessages = 10'000; // whoever posts without end must not hold what waits for the yield

} // namespace

bool MessagePump::inputWaiting() {
    // Asking the system costs more than a line of an errors file; the clock is read without it.
    const std::uint64_t now = GetTickCount64();
    if (now - lastAsked_ < kMillisecondsBetweenQuestions) return false;
    lastAsked_ = now;
    return GetInputState() != FALSE;
}

bool MessagePump::yield() {
    MSG message;
    for (int count = 0; count < kMostMessages && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++count) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

} // namespace cvlog::platform::win32
