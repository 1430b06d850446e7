#pragma once

#include <map>
#include <memory>

#include "workbench/errors_window.h"
#include "workbench/lines_dialog.h"
#include "workbench/tool_windows.h"

namespace workbench {

/// What the workbench knows of errors files: it shows them when the log or the user asks, makes new ones, and takes
/// them away from objects that change.
class ErrorsMenu {
public:
    ErrorsMenu(ComPtr<IDispatch> log, ComPtr<IDispatch> workspace, FrameWindow& frame, ToolWindows& tools,
               SharedProject project);

    /// Carries out a menu item; false when it is not one of this menu. Throws Failure.
    bool run(WORD id);
    /// Takes the keys of this menu's windows; true when the message was one of them.
    bool translate(MSG& message);

    /// Remembers the errors file, by its name in the project's folder, that the log was told with an object.
    void reported(const std::wstring& objectId, const std::wstring& file);
    /// The log's event: the user wants to see the messages about an object, the one of that number first.
    void showErrors(const std::wstring& objectId, long number);
    /// Writes an errors file of so many lines and reports it with the chosen object.
    void reportErrors(long lines);

    /// Null until errors were shown.
    ErrorsWindow* window() const { return window_.get(); }
    /// Opens the dialog that asks for a number of lines; the program goes on while it is open.
    LinesDialog& askForLines();
    void close() {
        dialog_.reset();
        window_.reset();
    }

private:
    std::wstring chosenObject() const;
    std::wstring errorsFileOf(const std::wstring& objectId) const;
    std::wstring fileOfSelectedRow(const std::wstring& objectId) const;
    std::wstring derivedFile(const std::wstring& objectId) const;
    std::wstring nameOf(const std::wstring& objectId) const;
    void changeObject(const std::wstring& objectId);

    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> workspace_;
    FrameWindow& frame_;
    ToolWindows& tools_;
    SharedProject project_;
    std::map<std::wstring, std::wstring, std::less<>> files_; // object -> path
    std::unique_ptr<ErrorsWindow> window_;
    std::unique_ptr<LinesDialog> dialog_;
};

} // namespace workbench
