// The workbench: a host of the activity log in the small. It offers the log what a host must offer, and
// replays a recorded session of reports into it.
//
//     workbench.exe [/auto READYFILE] PROJECT_DIR
//
// With /auto nobody is there: problems go to the error output, and the program ends when READYFILE, which it
// writes once everything is on the screen, has been removed. Exit codes: 0 done, 1 failed, 2 bad arguments or
// project folder.

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include <cwchar>
#include <memory>

#include "workbench/application.h"
#include "workbench/console.h"
#include "workbench/failure.h"
#include "workbench/text.h"

namespace workbench {

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kUnusable = 2 };

struct CommandLine {
    std::wstring project;
    std::wstring readyFile; // "" unless /auto is given
    bool valid = false;

    bool automatic() const { return !readyFile.empty(); }
};

CommandLine readCommandLine(int count, wchar_t** words) {
    CommandLine line;
    int next = 1;
    if (count >= 3 && sameName(words[1], L"/auto")) {
        line.readyFile = words[2];
        next = 3;
    }
    line.valid = next == count - 1;
    if (line.valid) {
        line.project = words[next];
    }
    return line;
}

/// OLE for the life of the object; the unused libraries go with it.
struct OleSession {
    OleSession() { check(OleInitialize(nullptr), L"Starting OLE"); }
    ~OleSession() {
        CoFreeUnusedLibrariesEx(0, 0);
        OleUninitialize();
    }
};

void complain(const CommandLine& line, const std::wstring& problem) {
    if (line.automatic()) {
        writeLine(STD_ERROR_HANDLE, L"workbench: " + problem);
    } else {
        MessageBoxW(nullptr, problem.c_str(), L"Workbench", MB_OK | MB_ICONERROR);
    }
}

void work(const CommandLine& line, SharedProject project) {
    const OleSession ole;
    Application application(std::move(project));
    const std::wstring summary = application.replaySession();
    if (line.automatic()) {
        application.runUntilRemoved(line.readyFile, summary);
    } else {
        writeLine(STD_OUTPUT_HANDLE, summary);
        application.run();
    }
    application.close();
}

int run(const CommandLine& line) {
    if (!line.valid) {
        complain(line, L"Usage: workbench.exe [/auto READYFILE] PROJECT_DIR");
        return kUnusable;
    }
    SharedProject project;
    try {
        project = std::make_shared<const ProjectFolder>(loadProjectFolder(line.project));
    } catch (const Failure& failure) {
        complain(line, failure.message());
        return kUnusable;
    }
    try {
        work(line, std::move(project));
        return kDone;
    } catch (const Failure& failure) {
        complain(line, failure.message());
    } catch (const std::exception&) {
        complain(line, L"Out of memory");
    }
    return kFailed;
}

} // namespace

} // namespace workbench

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    return workbench::run(workbench::readCommandLine(__argc, __wargv));
}
