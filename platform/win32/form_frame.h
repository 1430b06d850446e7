#pragma once

#include "platform/win32/host_window.h"

#include <memory>

namespace cvlog::platform::win32 {

/// Receives what happens in a form's window. Any of the calls may end in the receiver's destruction, which takes
/// it off the frame.
class FormFrameEvents {
public:
    /// True when the message is dealt with; `result` is then its answer.
    virtual bool formMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) = 0;
    /// The window goes, and not by `close`; what lies on it is still there.
    virtual void windowLost() = 0;

protected:
    ~FormFrameEvents() = default;
};

/// A form's top-level window. It outlives its receiver by the messages that are under way.
class FormFrame : public std::enable_shared_from_this<FormFrame>, private MessageHandler {
public:
    /// A hidden window. Throws std::runtime_error when the system makes none.
    static std::shared_ptr<FormFrame> make(HostWindow& host, DWORD style, DWORD extendedStyle);

    /// 0 once the window is gone.
    HWND window() const noexcept { return window_; }
    void setEvents(FormFrameEvents* events) noexcept { events_ = events; }
    bool tells(const FormFrameEvents* events) const noexcept { return events_ == events; }
    /// Keys that move about in a form do so while this child of it has the focus, in anybody's message loop. All
    /// such children are windows of one class.
    void watchKeys(HWND child) noexcept;
    /// Takes the events off and destroys the window: now, or, from inside a message of it, when that is done.
    void close() noexcept;

private:
    class Visit;

    explicit FormFrame(HostWindow& host) noexcept : host_(host) {}
    LRESULT handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void windowGone() noexcept override;
    static LRESULT CALLBACK childProcedure(HWND child, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleChildMessage(HWND child, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    bool navigates(HWND target, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HostWindow& host_;
    HWND window_ = nullptr;
    WNDPROC originalChild_ = nullptr;
    FormFrameEvents* events_ = nullptr;
    int depth_ = 0; // messages of the window and its watched children under way
    bool navigating_ = false;
    bool closing_ = false;
    bool going_ = false;              // the system destroys the window
    std::shared_ptr<FormFrame> self_; // as long as the window lives
};

} // namespace cvlog::platform::win32
