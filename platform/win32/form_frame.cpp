#include "platform/win32/form_frame.h"

#include "base/failure.h"
#include "platform/win32/firewall.h"

#include <utility>

namespace cvlog::platform::win32 {

namespace {

constexpr WPARAM kFirstShownCharacter = L'!';

bool movesAbout(UINT message, WPARAM wParam) noexcept {
    switch (message) {
    case WM_KEYDOWN:
        return wParam == VK_TAB || wParam == VK_RETURN || wParam == VK_ESCAPE ||
               (wParam >= VK_LEFT && wParam <= VK_DOWN);
    case WM_CHAR:
    case WM_SYSCHAR:
        return wParam >= kFirstShownCharacter;
    default:
        return false;
    }
}

} // namespace

/// A message under way: the frame and what it is a part of stay as long, and a window that was closed meanwhile goes
/// after the last one.
class FormFrame::Visit {
public:
    explicit Visit(FormFrame& frame)
        : hostOwner_(frame.host_.owner ? frame.host_.owner() : nullptr), frame_(frame.shared_from_this()) {
        ++frame_->depth_;
    }
    ~Visit() {
        if (--frame_->depth_ == 0 && std::exchange(frame_->closing_, false) && frame_->window_)
            frame_->host_.destroyLater(frame_->window_);
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

private:
    std::shared_ptr<void> hostOwner_; // goes last
    std::shared_ptr<FormFrame> frame_;
};

std::shared_ptr<FormFrame> FormFrame::make(HostWindow& host, DWORD style, DWORD extendedStyle) {
    std::shared_ptr<FormFrame> made(new FormFrame(host));
    made->window_ = makeOwnWindow(*made, style, extendedStyle, nullptr, true);
    made->self_ = made;
    return made;
}

void FormFrame::watchKeys(HWND child) noexcept {
    SetWindowLongPtrW(child, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    originalChild_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FormFrame::childProcedure)));
}

void FormFrame::close() noexcept {
    events_ = nullptr;
    if (!window_ || going_) return;
    if (depth_ == 0) {
        DestroyWindow(window_);
        return;
    }
    closing_ = true;
    ShowWindow(window_, SW_HIDE);
}

LRESULT FormFrame::handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!window_) return DefWindowProcW(window, message, wParam, lParam); // it is being made
    const Visit visit(*this);
    if (message == WM_DESTROY) {
        going_ = true;
        if (events_) base::ignoring([this] { events_->windowLost(); });
        return 0;
    }
    LRESULT result = 0;
    if (navigates(window, message, wParam, lParam)) return 0;
    const bool taken =
        events_ && firewall(false, [&] { return events_->formMessage(message, wParam, lParam, result); });
    return taken ? result : DefWindowProcW(window, message, wParam, lParam);
}

void FormFrame::windowGone() noexcept {
    window_ = nullptr;
    self_.reset(); // the last thing: this may be gone now
}

LRESULT CALLBACK FormFrame::childProcedure(HWND child, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* frame = reinterpret_cast<FormFrame*>(GetWindowLongPtrW(child, GWLP_USERDATA));
    return frame->handleChildMessage(child, message, wParam, lParam);
}

LRESULT FormFrame::handleChildMessage(HWND child, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const Visit visit(*this);
    if (message == WM_NCDESTROY)
        SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(originalChild_));
    if (navigates(child, message, wParam, lParam)) return 0;
    return CallWindowProcW(originalChild_, child, message, wParam, lParam);
}

bool FormFrame::navigates(HWND target, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    // The system's own way gives a message that it has no use for back to the window.
    if (!events_ || navigating_ || !movesAbout(message, wParam)) return false;
    navigating_ = true;
    MSG key{};
    key.hwnd = target;
    key.message = message;
    key.wParam = wParam;
    key.lParam = lParam;
    const bool used = IsDialogMessageW(window_, &key) != FALSE;
    navigating_ = false;
    return used;
}

} // namespace cvlog::platform::win32
