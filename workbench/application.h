#pragma once

#include <functional>
#include <memory>
#include <string>

#include "workbench/errors_menu.h"
#include "workbench/event_sink.h"
#include "workbench/log_menu.h"
#include "workbench/options_dialog.h"
#include "workbench/repository_objects.h"

namespace workbench {

/// The workbench at work on one project: its windows, its log, and what happens between them.
class Application {
public:
    /// Opens the log on the project and shows it in a tool window. Throws Failure when a part of that fails.
    explicit Application(SharedProject project);
    /// Closes what `close` has not closed, whatever fails.
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    FrameWindow& frame() { return frame_; }
    ToolWindows& tools() { return tools_; }
    IDispatch* log() const { return log_.Get(); }
    IDispatch* workspace() const { return workspace_.Get(); }
    /// The path of a file in the project's folder.
    std::wstring projectFile(const wchar_t* name) const { return project_->file(name); }
    ErrorsMenu& errors() { return *errorsMenu_; }
    IDispatch* options() const { return options_.Get(); }

    /// Called when the log asks for the wording of a code.
    std::function<void()> onCodeAsked;

    /// Makes the log wanted, whatever the user wanted last: a log that is not in view reports in message boxes.
    void wantLog();
    /// Replays the project's session; returns a line with what it came to.
    std::wstring replaySession();
    /// Opens the options dialog; the program goes on while it is open.
    OptionsDialog& showOptions();
    void closeOptions() { dialog_.reset(); }

    /// Runs until the user closes the window.
    void run();

    /// Closes the database, the tool windows and the log, in this order.
    void close();

private:
    void connect();
    void openLog();
    void addLogControl();
    void command(WORD id);
    void ownCommand(WORD id);
    bool translate(MSG& message);
    void onEvent(DISPID event, const Arguments& arguments);
    void attempt(const std::function<void()>& action);
    long rowsShown() const;

    SharedProject project_;
    FrameWindow frame_;
    ToolWindows tools_;
    ComPtr<IDispatch> workspace_;
    ComPtr<IDispatch> options_;
    ComPtr<IDispatch> log_;
    std::unique_ptr<LogMenu> logMenu_;
    std::unique_ptr<ErrorsMenu> errorsMenu_;
    std::unique_ptr<EventConnection> events_;
    std::unique_ptr<OptionsDialog> dialog_;
    long changes_ = 0; // LogChanged events so far
};

} // namespace workbench
