#pragma once

#include <functional>
#include <string>
#include <vector>

#include "workbench/application.h"
#include "workbench/log_list.h"

namespace workbench {

/// The host tries what it offers, through the late-bound members that the log calls, and looks at the windows for
/// what has come of it. Opens and closes tool windows; leaves none open.
class SelfCheck {
public:
    explicit SelfCheck(Application& application) : application_(application) {}

    void run();
    bool failed() const { return failures_ > 0; }
    /// A line for each check that failed, one for all of them together, and what was counted.
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
    // self_check_lists.cpp: two lists of one log, and its menu
    using Step = std::function<void(const wchar_t* what, const std::function<void()>& act)>;
    void checkLists();
    void checkEntries(const LogList& list, const Step& step);
    void checkThatDifferencesShow(IDispatch* view, IDispatch* other);
    void reportAll();
    void clickHeader(const LogList& list, long column);
    std::wstring withMenu(const std::vector<BYTE>& keys);
    void expectMenu(const std::wstring& expected, const std::wstring& what);
    // self_check_errors.cpp: errors files
    void checkErrors();
    void checkErrorsWindow(const LogList& list);
    void checkLinesDialog(const LogList& list);
    void checkOddLines(const LogList& list);
    void choose(WORD id);
    // self_check_session.cpp: the entries of the session
    struct Opened {
        size_t entries = 0;
        size_t lines = 0;
        size_t hidden = 0;
        size_t rows = 0;
    };
    void checkSession();
    void checkOpening(const LogList& list, long row, Opened& opened);
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
    std::wstring notes_; // what was counted
    int checks_ = 0;
    int failures_ = 0;
};

} // namespace workbench
