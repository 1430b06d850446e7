#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "workbench/control_container.h"

namespace workbench {

/// The workbench's window: a menu, the log control, and a status bar below it.
class MainWindow {
public:
    /// Creates the window, not yet shown. Throws Failure when that fails.
    explicit MainWindow(const std::wstring& title);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    HWND handle() const { return window_; }

    /// Called when the user chooses File, Replay session again.
    std::function<void()> onReplay;

    /// Creates the control that fills the window; there is room for one.
    void createControl(const wchar_t* progId);
    void closeControl() { container_.reset(); }
    /// Null while there is no control.
    ControlContainer* control() const { return container_.get(); }

    void show();
    void layOut();
    void focusControl();

    /// The two parts of the status bar.
    void showEvent(const std::wstring& text);
    void showCounts(const std::wstring& text);

    /// The mouse pointer over the window: 0 the usual one, 11 the hourglass, 13 the arrow with hourglass.
    int pointer() const { return pointer_; }
    void setPointer(int pointer);

    /// Runs the window's messages until the user closes it, or until `done` (asked every 50 ms) says so.
    /// False when the user closed it.
    bool runUntil(const std::function<bool()>& done);
    /// Handles the messages that wait now.
    void pump();
    /// True once the user wants to leave.
    bool closed() const { return closed_; }

private:
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    void command(WORD id);
    int scaled(int pixels) const;

    HWND window_ = nullptr;
    HWND status_ = nullptr;
    std::unique_ptr<ControlContainer> container_;
    int pointer_ = 0;
    bool closed_ = false;
};

} // namespace workbench
