#pragma once

#include "tests/windows/ax_window.h"
#include "tests/windows/options_double.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::tests {

/// A host in the test's process with one tool: a real window that contains controls, and options that tell when they
/// are saved.
class PlacingHost {
public:
    explicit PlacingHost(const std::wstring& projectFolder);
    /// The window goes with all that is in it.
    ~PlacingHost();
    PlacingHost(const PlacingHost&) = delete;
    PlacingHost& operator=(const PlacingHost&) = delete;

    IDispatch* workspace() const { return workspace_.Get(); }
    /// The tool's window as an object. It is also the container to give to the log.
    IDispatch* window() const { return window_.Get(); }
    HWND handle() const noexcept { return handle_; }
    OptionsDouble& options() { return *options_.Get(); }
    /// The control named "LogView"; null until somebody has added it.
    const AxWindow* logView() const { return logView_.get(); }
    /// The control goes, as far as the host holds it.
    void removeLogView() {
        logViewObject_.Reset();
        logView_.reset();
    }
    const std::wstring& product() const { return product_; }

    /// What came with one call of Move.
    struct Moved {
        std::array<VARTYPE, 4> types;
        std::array<double, 4> values;
    };

    LONG toldHandle; // what the window's `hwnd` answers
    int layouts = 0; // calls of DisplayLog
    int focused = 0; // calls of the window's SetFocus
    std::vector<Moved> moves;
    std::vector<std::wstring> added; // names given to Controls.Add

private:
    void makeWindowObject();
    void makeWorkspaceObject(const std::wstring& projectFolder);
    IDispatch* makeControls();
    IDispatch* makeLogView(const wchar_t* progId);
    HRESULT move(DISPPARAMS& parameters);

    std::wstring product_;
    HWND handle_;
    ComPtr<OptionsDouble> options_;
    ComPtr<IDispatch> window_;
    ComPtr<IDispatch> logViewObject_;
    std::unique_ptr<AxWindow> logView_;
    ComPtr<ScriptedDispatch> workspace_;
};

} // namespace cvlog::tests
