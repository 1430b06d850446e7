#pragma once

#include <windows.h>

#include <vector>

#include "workbench/variant.h"

namespace workbench {

/// The dialog in which the user changes the options document. OK saves it, so that the log hears of the change.
class OptionsDialog {
public:
    /// Creates the dialog, not yet shown, with what `options` say now. Throws Failure when that fails.
    OptionsDialog(HWND owner, ComPtr<IDispatch> options);
    ~OptionsDialog();
    OptionsDialog(const OptionsDialog&) = delete;
    OptionsDialog& operator=(const OptionsDialog&) = delete;

    HWND handle() const { return window_; }
    /// Shows it; the owner takes no input until the dialog is closed.
    void show();
    /// True once the user has closed it.
    bool closed() const { return closed_; }
    bool translate(MSG& message) { return !closed_ && IsDialogMessageW(window_, &message); }

private:
    /// A checkbox and the node whose VALUE it shows.
    struct Box {
        HWND window;
        ComPtr<IDispatch> node;
    };

    static INT_PTR CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void fill();
    void addBox(HWND window, ComPtr<IDispatch> node);
    void addKinds();
    HWND makeKindBox(int index, const std::wstring& text, HWND before) const;
    void makeRoom(int dialogUnits) const;
    void save();
    void finish(WORD button);

    HWND owner_;
    HWND window_ = nullptr;
    ComPtr<IDispatch> options_;
    std::vector<Box> boxes_;
    bool closed_ = false;
};

} // namespace workbench
