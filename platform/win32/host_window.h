#pragma once

#include "platform/win32/own_window.h"

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace cvlog::platform::win32 {

/// Hears of one of the host window's timers. It may go while it is told.
class TimerReceiver {
public:
    virtual void timeCame() = 0;

protected:
    ~TimerReceiver() = default;
};

/// A top-level window of one apartment that is never shown: lists that no control shows at the moment live
/// under it. Being top-level it hears what the system tells all programs, and passes it on to the lists
/// wherever they are. Timers run on it.
class HostWindow : private MessageHandler {
public:
    HostWindow();
    /// Destroys what is still parked.
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND handle() const noexcept { return window_; }
    void addListener(HWND window) { listeners_.push_back(window); }
    void removeListener(HWND window) noexcept { std::erase(listeners_, window); }
    /// Destroys a window of this thread, a child or a top-level one, as soon as messages are taken again, and
    /// not before: one of its own messages may still be under way.
    void destroyLater(HWND window) noexcept;
    /// Tells the receiver every so many milliseconds. Answers the timer's number, which is never given again.
    /// Throws std::runtime_error when the system has no timer left.
    UINT_PTR startTimer(UINT milliseconds, TimerReceiver& receiver);
    /// No call comes any more, also not for a message that is already on its way.
    void stopTimer(UINT_PTR timer) noexcept;

    /// Answers with what this window is a part of. A list holds it while one of its messages is under way: a handler
    /// may let go of everything else, and the system goes on with the list's window when the handler is done.
    std::function<std::shared_ptr<void>()> owner;
    /// Answers with what keeps the code loaded and nothing else: for objects that others may hold longer than there are
    /// windows.
    std::function<std::shared_ptr<void>()> codeLock;

private:
    LRESULT handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void windowGone() noexcept override { window_ = nullptr; }
    bool isOurs(HWND window) const noexcept;

    OwnWindowClass class_; // of this window and of all below it
    HWND window_ = nullptr;
    std::vector<HWND> listeners_;
    std::unordered_map<UINT_PTR, TimerReceiver*> timers_;
    UINT_PTR lastTimer_ = 0;
};

} // namespace cvlog::platform::win32
