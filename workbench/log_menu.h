#pragma once

#include "workbench/tool_windows.h"
#include "workbench/variant.h"

namespace workbench {

/// The menu that drives the log: one item for each thing that a host can ask of it, each a late-bound call.
class LogMenu {
public:
    LogMenu(ComPtr<IDispatch> log, ComPtr<IDispatch> workspace, ToolWindows& tools, SharedProject project);

    /// Carries out a menu item; false when it is not one of this menu. Throws Failure with the log's own words.
    bool run(WORD id);
    /// Checks the items that are in force.
    void update(HMENU menu) const;

    /// Opens the log on the project's database; false when the log cannot.
    bool openDatabase();
    /// Puts the log into the active tool window, or nowhere when none is open.
    void followActiveTool();
    /// Takes the log out of the windows, which are about to go. What the user wanted to see stays remembered.
    void leave();
    /// Reports that the object chosen in the active tool window was checked.
    void report(size_t sample);

private:
    bool runPlacement(WORD id);
    bool runReports(WORD id);
    void setParent(ToolWindow* tool);
    void toggle(const wchar_t* property);
    bool holds(const wchar_t* property) const;
    void moveHostWindow();

    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> workspace_;
    ToolWindows& tools_;
    SharedProject project_;
    bool follows_ = true;
};

} // namespace workbench
