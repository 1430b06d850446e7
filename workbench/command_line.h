#pragma once

#include <string>

namespace workbench {

/// What the program was started with.
struct CommandLine {
    enum Mode {
        kInteractive, // somebody is there
        kAuto,        // one picture: the replayed session
        kPictures,    // a picture of each place that the log can have, and of the options dialog
        kTour,        // pictures of everything else
        kGlance,      // a few of these
        kCheck        // the host tries its own members
    };

    Mode mode = kInteractive;
    std::wstring file; // what the mode writes; "" when interactive
    std::wstring project;
    bool valid = false;
};

CommandLine readCommandLine(int count, wchar_t** words);

} // namespace workbench
