#pragma once

#include "platform/win32/own_window.h"

#include <functional>
#include <memory>
#include <vector>

namespace cvlog::platform::win32 {

/// A top-level window of one apartment that is never shown: lists that no control shows at the moment live
/// under it. Being top-level it hears what the system tells all programs, and passes it on to the lists
/// wherever they are.
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
    /// Destroys a window of this thread as soon as messages are taken again, and not before: one of its own
    /// messages may still be under way.
    void destroyLater(HWND window) noexcept;

    /// Answers with what this window is a part of. A list holds it while one of its messages is under way: a handler
    /// may let go of everything else, and the system goes on with the list's window when the handler is done.
    std::function<std::shared_ptr<void>()> owner;

private:
    LRESULT handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void windowGone() noexcept override { window_ = nullptr; }

    OwnWindowClass class_; // of this window and of all below it
    HWND window_ = nullptr;
    std::vector<HWND> listeners_;
};

} // namespace cvlog::platform::win32
