#pragma once

#include <windows.h>

namespace workbench::report {

/// Says how far a long work has come and lets the user break it off by its button or Esc. It comes up when the work
/// takes longer than half a second. Only its own messages are handled meanwhile, and all keys are its own: nothing else of
/// the program runs.
class ProgressWindow {
public:
    ProgressWindow() : started_(GetTickCount64()) {}
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    /// False once the user has broken the work off.
    bool show(long done, long all);
    HWND handle() const { return window_; }

private:
    void open();
    void handleMessages();
    void noteKey(const MSG& message);
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    ULONGLONG started_;
    ULONGLONG looked_ = 0;
    HWND window_ = nullptr;
    HWND text_ = nullptr;
    bool interrupted_ = false;
    bool refused_ = false; // the system gave no window
};

} // namespace workbench::report
