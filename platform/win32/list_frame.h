#pragma once

#include "platform/win32/host_window.h"

#include <memory>

namespace cvlog::platform::win32 {

/// Receives what happens in a list window. Any of the calls may end in the receiver's destruction, which
/// takes it off the frame.
class ListFrameEvents {
public:
    /// A message for the list, before the list sees it; it may change the message. True when the list must
    /// not see it; `result` is then its answer.
    virtual bool beforeMessage(UINT message, WPARAM& wParam, LPARAM lParam, LRESULT& result) = 0;
    virtual void afterMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT result) = 0;
    /// What the list tells its parent.
    virtual LRESULT notified(NMHDR& header) = 0;
    /// Colours, theme or resolution of the screen changed.
    virtual void surroundingsChanged() = 0;
    /// A message that `postLater` sent.
    virtual void laterCame(WPARAM what) = 0;

protected:
    ~ListFrameEvents() = default;
};

/// The list's own window inside a plain one that fills a control and moves from parent to parent. So the
/// list's handle stays the same and its notifications come to us, whoever the parent is. Starts parked under
/// the host window.
class ListFrame : public std::enable_shared_from_this<ListFrame>, private MessageHandler {
public:
    static std::shared_ptr<ListFrame> make(HostWindow& host);

    /// 0 once the windows are gone.
    HWND frame() const noexcept { return frame_; }
    HWND list() const noexcept { return list_; }
    void setEvents(ListFrameEvents* events) noexcept { events_ = events; }
    bool tells(const ListFrameEvents* events) const noexcept { return events_ == events; }
    void moveTo(HWND parent, const RECT& area) noexcept;
    void park() noexcept;
    void postLater(WPARAM what) noexcept;
    /// What keeps this code loaded, and nothing else; null where nobody asks for it.
    std::shared_ptr<void> lockCode() const { return host_.codeLock ? host_.codeLock() : nullptr; }
    /// Takes the events off and destroys the windows: now, or, from inside one of their messages, when that
    /// is done.
    void close() noexcept;

private:
    explicit ListFrame(HostWindow& host) noexcept : host_(host) {}
    void makeWindows();
    LRESULT handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void windowGone() noexcept override;
    LRESULT handleListMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static LRESULT CALLBACK listProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT surroundingsChanged(UINT message, WPARAM wParam, LPARAM lParam);

    HostWindow& host_;
    HWND frame_ = nullptr;
    HWND list_ = nullptr;
    WNDPROC original_ = nullptr;
    ListFrameEvents* events_ = nullptr;
    int depth_ = 0; // messages of the list under way
    bool closing_ = false;
    std::shared_ptr<ListFrame> self_; // as long as the windows live
};

} // namespace cvlog::platform::win32
