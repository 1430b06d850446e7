#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace workbench {

/// The workbench's main window: an MDI frame with a menu, the area in which tool windows live, and a status bar.
class FrameWindow {
public:
    enum Part { kNews, kChanges, kFocus, kCounts, kParts }; // the parts of the status bar, and their number

    /// Creates the window, not yet shown. Throws Failure when that fails.
    explicit FrameWindow(const std::wstring& title);
    ~FrameWindow();
    FrameWindow(const FrameWindow&) = delete;
    FrameWindow& operator=(const FrameWindow&) = delete;

    HWND handle() const { return window_; }
    /// The window whose children are the MDI children.
    HWND client() const { return client_; }

    /// Called for a menu item or its key; a Failure goes to the status bar.
    std::function<void(WORD id)> onCommand;
    /// Called before the user sees a menu: the place to check and gray its items.
    std::function<void(HMENU menu)> onMenuOpens;
    /// Called when the frame stops being the active window.
    std::function<void()> onLeave;
    /// Sees each message before it is dispatched; true when it has used it.
    std::function<bool(MSG& message)> onMessage;
    /// Offers a key to the menu and to the keys of MDI frames; true when it was one of them.
    bool translateKey(MSG& message);

    void show();
    /// Shown when the window next handles messages: a part that changes often costs little.
    void showStatus(Part part, const std::wstring& text);
    const std::wstring& status(Part part) const { return texts_[part]; }

    /// The mouse pointer over the window (mouse_pointer.h has the numbers).
    int pointer() const { return pointer_; }
    void setPointer(int pointer);

    /// Runs the thread's messages until the user closes the window, or until `done` (asked every 50 ms) says
    /// so. False when the user closed it.
    bool runUntil(const std::function<bool()>& done);
    /// Handles the messages that wait now.
    void pump();
    /// Asks for the end, as the user does with the close box.
    void close() { closed_ = true; }

private:
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT usual(UINT message, WPARAM wParam, LPARAM lParam) const;
    void createParts();
    void moveTo(const RECT& area);
    void layOut();
    void updateStatus();
    bool command(WPARAM wParam);

    HWND window_ = nullptr;
    HWND client_ = nullptr;
    HWND status_ = nullptr;
    HACCEL accelerators_ = nullptr;
    std::wstring texts_[kParts]; // of the status bar
    bool statusIsOld_ = false;
    int pointer_ = 0;
    bool closed_ = false;
};

} // namespace workbench
