#pragma once

#include <windows.h>

#include <commctrl.h>

#include "workbench/error_messages.h"
#include "workbench/repository_objects.h"

namespace workbench {

/// The window in which the user reads the messages about one object. There is one; it is hidden until messages are
/// shown, and again when the user closes it.
class ErrorsWindow {
public:
    enum Column { kSeverity, kObject, kLine, kCode, kText, kColumns };

    /// Throws Failure when the window cannot be created.
    ErrorsWindow(HWND owner, SharedProject project);
    ~ErrorsWindow();
    ErrorsWindow(const ErrorsWindow&) = delete;
    ErrorsWindow& operator=(const ErrorsWindow&) = delete;

    HWND handle() const { return window_; }
    HWND list() const { return list_; }
    bool visible() const { return IsWindowVisible(window_) != FALSE; }
    std::wstring title() const;
    std::wstring summary() const;

    /// Shows messages about the object of that name. With a number, from 1, that one is chosen and the window is the
    /// active one; with 0 none is, and the user stays where he is.
    void show(const std::wstring& name, ErrorMessages messages, long number);
    /// Hides the window; the focus goes back to where it came from.
    void close();

    /// Takes the window's own keys; true when the message was one of them.
    bool translate(const MSG& message);

private:
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    void create(HWND owner);
    void createParts();
    void addColumns();
    void updateResolution();
    void updateIcons();
    void layOut();
    void placeColumns();
    void choose(long number);
    void fillItem(LVITEMW& item);
    std::wstring cellText(size_t row, int column);
    const ErrorMessage& messageAt(size_t row);
    std::wstring objectName(const ErrorMessage& message) const;
    void resize(const RECT& area);

    SharedProject project_;
    ErrorMessages messages_;
    size_t readRow_ = static_cast<size_t>(-1); // the row of `read_`: a row is asked for cell by cell
    ErrorMessage read_;
    HWND window_ = nullptr;
    HWND title_ = nullptr;
    HWND summary_ = nullptr;
    HWND list_ = nullptr;
    HWND focusBefore_ = nullptr;
    HFONT font_ = nullptr;
    HFONT titleFont_ = nullptr;
    HIMAGELIST icons_ = nullptr;
};

} // namespace workbench
