#pragma once

#include "tests/support/script_object.h"

namespace cvlog::tests {

/// A tool of the host with its window, which can hold the log. Calls are in the journal as "Window.", "Controls." and
/// "LogView.".
class FakeWindow {
public:
    explicit FakeWindow(CallCounter& calls);
    FakeWindow(const FakeWindow&) = delete;
    FakeWindow& operator=(const FakeWindow&) = delete;

    static constexpr std::int32_t kHandle = 4711;

    std::shared_ptr<ScriptObject> tool;
    std::shared_ptr<ScriptObject> window;
    std::shared_ptr<ScriptCollection> controls;
    /// Made by Controls.Add.
    std::shared_ptr<ScriptObject> logView;

    /// Puts a log control into the window before the component looks.
    void addLogView();

private:
    CallCounter& calls_;
};

} // namespace cvlog::tests
