#pragma once

#include <memory>
#include <string>

#include "workbench/event_sink.h"
#include "workbench/main_window.h"
#include "workbench/repository_objects.h"

namespace workbench {

/// The workbench at work on one project: its window, its log, the events between them.
class Application {
public:
    /// Opens the log on the project and shows the window. Throws Failure when a part of that fails.
    explicit Application(SharedProject project);
    /// Closes what `close` has not closed, whatever fails.
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Replays the project's session; returns a line with what it came to.
    std::wstring replaySession();

    /// Runs until the user closes the window.
    void run();
    /// Paints, writes `line` to `readyFile`, and runs until that file is gone or the user closes the window.
    void runUntilRemoved(const std::wstring& readyFile, const std::wstring& line);

    /// Closes the database, the control and the log, in this order.
    void close();

private:
    void openLog();
    void onEvent(DISPID event, const Arguments& arguments);
    long rowsShown() const;

    SharedProject project_;
    MainWindow window_;
    ComPtr<IDispatch> workspace_;
    ComPtr<IDispatch> log_;
    std::unique_ptr<EventConnection> events_;
    long changes_ = 0; // LogChanged events so far
};

} // namespace workbench
