#pragma once

#include <vector>

#include "workbench/application.h"
#include "workbench/log_list.h"

namespace workbench {

/// How long a picture has to stay as it is before it is taken.
inline constexpr ULONGLONG kSettleMilliseconds = 300;

/// Shows the workbench to another program that takes pictures of the screen. For each picture the workbench paints
/// what there is to see, writes a line to a file, and goes on when that file has been removed. What cannot be shown is
/// left out, and the error output says why.
class Showcase {
public:
    Showcase(Application& application, std::wstring readyFile)
        : application_(application), readyFile_(std::move(readyFile)) {}

    /// What is on the screen now; `line` is what the file says.
    void show(const std::wstring& line);

    /// "docked" and "floating", the log in its two places, "two", two controls that show it side by side, and "options",
    /// the dialog.
    void showPlaces();
    /// Everything that the log and the workbench open or change: menus, sorting, columns, entries and their errors, the
    /// history. Adds entries, and ends with an empty log and history.
    void showEverything();
    /// A few of these, to see another language or resolution.
    void showSome();

private:
    /// A picture of what has been opened by a call that returns only when it is closed.
    struct Scene {
        std::wstring picture;
        std::function<bool()> isThere;
        std::function<void()> close;
    };

    void attempt(const wchar_t* what, const std::function<void()>& action);
    void paint();
    void showBothPlaces();
    void showLog(const wchar_t* picture, bool docked);
    void showTwo();
    // showcase_tour.cpp
    void perform(const std::function<void()>& open, const std::vector<Scene>& scenes);
    LogList dockedList();
    void showMenu(const wchar_t* picture, long row);
    void chooseInMenu(const std::vector<BYTE>& keys);
    void showMenus(const LogList& list);
    void showOpenEntry(const LogList& list);
    void showErrors(const LogList& list, long entry);
    void showColumns(const LogList& list);
    void showStrip(const LogList& list, int frames);
    void showHiddenRecords(const LogList& list);
    void inHistory(std::vector<Scene> scenes);
    bool historyIsThere();
    void showHistory();
    void showEmptyHistory();
    void showEmptyLog();
    void showFloatingMenus();
    void chooseObject();
    long reportErrors(const LogList& list, long lines);

    FrameWindow& frame() { return application_.frame(); }

    Application& application_;
    std::wstring readyFile_;
};

} // namespace workbench
