#pragma once

#include <windows.h>

#include "workbench/repository_objects.h"

namespace workbench {

/// What a tool window shows of its own: the project's objects in a list, and a button that checks the chosen one.
/// The windows are children of the tool window and go with it.
class ToolPanel {
public:
    static constexpr WORD kCheckButton = 1;

    ToolPanel(HWND parent, SharedProject project);
    ~ToolPanel();
    ToolPanel(const ToolPanel&) = delete;
    ToolPanel& operator=(const ToolPanel&) = delete;

    HWND list() const { return list_; }
    HWND button() const { return button_; }
    /// The identifier of the chosen object; "" in a project without objects.
    std::wstring chosenObject() const;

    void place(const RECT& area);
    /// Takes the system's font for the resolution that the window has now.
    void updateFont();

private:
    HWND parent_;
    SharedProject project_;
    HWND list_ = nullptr;
    HWND button_ = nullptr;
    HFONT font_ = nullptr;
};

} // namespace workbench
