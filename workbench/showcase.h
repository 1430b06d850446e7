#pragma once

#include "workbench/application.h"

namespace workbench {

/// Shows the workbench to another program that takes pictures of the screen. For each picture the workbench paints
/// what there is to see, writes a line to a file, and goes on when that file has been removed.
class Showcase {
public:
    Showcase(Application& application, std::wstring readyFile)
        : application_(application), readyFile_(std::move(readyFile)) {}

    /// What is on the screen now; `line` is what the file says.
    void show(const std::wstring& line);

    /// "docked" and "floating", the log in its two places, "two", two controls that show it side by side, and "options",
    /// the dialog. What the log refuses is left out, and the error output says why.
    void showPlaces();

private:
    void showBothPlaces();
    void showLog(const wchar_t* picture, bool docked);
    void showTwo();

    Application& application_;
    std::wstring readyFile_;
};

} // namespace workbench
