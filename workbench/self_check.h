#pragma once

#include <string>

#include "workbench/application.h"

namespace workbench {

/// The host tries what it offers, through the late-bound members that the log calls, and looks at the windows for
/// what has come of it. Opens and closes tool windows; leaves none open.
class SelfCheck {
public:
    explicit SelfCheck(Application& application) : application_(application) {}

    void run();
    bool failed() const { return failures_ > 0; }
    /// A line for each check that failed and one for all of them together.
    std::wstring report() const;

private:
    void expect(bool holds, const std::wstring& what);
    /// Calls, and expects the call to fail.
    template <class Call>
    void expectFailure(Call failing, const std::wstring& what);

    // self_check.cpp: the objects
    void checkToolList();
    void checkParent();
    void checkControls();
    void checkAddedControl(IDispatch* window, IDispatch* control);
    void checkPlacement();
    void checkState();
    void checkKinds();
    void checkClosing();
    // self_check_input.cpp: what the user does
    void checkTabs();
    void checkWindowKeys();
    void checkOptions();
    void checkPlaces();
    void checkMenu();
    void press(BYTE key, BYTE modifier = 0);

    FrameWindow& frame() { return application_.frame(); }
    ToolWindows& tools() { return application_.tools(); }
    /// The active tool window as the log sees it.
    ComPtr<IDispatch> activeWindow() const;

    Application& application_;
    std::wstring lines_;
    int checks_ = 0;
    int failures_ = 0;
};

} // namespace workbench
