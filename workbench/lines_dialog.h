#pragma once

#include <windows.h>

#include <functional>

namespace workbench {

/// The dialog that asks how many lines an errors file shall have.
class LinesDialog {
public:
    static constexpr long kMost = 10'000'000;

    /// Creates the dialog, not yet shown; `onAnswer` gets a number from 1 to kMost when the user presses OK. Throws
    /// Failure when it cannot be created.
    LinesDialog(HWND owner, std::function<void(long lines)> onAnswer);
    ~LinesDialog();
    LinesDialog(const LinesDialog&) = delete;
    LinesDialog& operator=(const LinesDialog&) = delete;

    HWND handle() const { return window_; }
    /// Shows it; the owner takes no input until the dialog is closed.
    void show();
    /// True once the user has closed it.
    bool closed() const { return closed_; }
    bool translate(MSG& message) { return !closed_ && IsDialogMessageW(window_, &message); }
    /// Tells the answer, once the dialog is closed and the owner takes input again.
    void tellAnswer() const;

private:
    static INT_PTR CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void finish(WORD button);

    HWND owner_;
    HWND window_ = nullptr;
    std::function<void(long lines)> onAnswer_;
    long answer_ = 0;
    bool closed_ = false;
};

} // namespace workbench
