// The workbench: a host of the activity log in the small. It offers the log what a host must offer, and
// replays a recorded session of reports into it.
//
//     workbench.exe PROJECT_DIR
//     workbench.exe /auto READYFILE PROJECT_DIR
//     workbench.exe /pictures READYFILE PROJECT_DIR
//     workbench.exe /tour READYFILE PROJECT_DIR
//     workbench.exe /glance READYFILE PROJECT_DIR
//     workbench.exe /check REPORTFILE PROJECT_DIR
//
// With an option nobody is there: problems go to the error output. With /auto the program ends when READYFILE,
// which it writes once everything is on the screen, has been removed; with /pictures, /tour and /glance it goes on to the
// next picture then. With /check it tries its own members and says in REPORTFILE what came of it. Exit codes: 0 done, 1 failed,
// 2 bad arguments or project folder.

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include <memory>

#include "workbench/application.h"
#include "workbench/command_line.h"
#include "workbench/console.h"
#include "workbench/failure.h"
#include "workbench/output_file.h"
#include "workbench/report/report_generator.h"
#include "workbench/self_check.h"
#include "workbench/showcase.h"

namespace workbench {

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kUnusable = 2 };

/// OLE for the life of the object; the unused libraries go with it.
struct OleSession {
    OleSession() { check(OleInitialize(nullptr), L"Starting OLE"); }
    ~OleSession() {
        CoFreeUnusedLibrariesEx(0, 0);
        OleUninitialize();
    }
};

void complain(const CommandLine& line, const std::wstring& problem) {
    if (line.mode != CommandLine::kInteractive) {
        writeLine(STD_ERROR_HANDLE, L"workbench: " + problem);
    } else {
        MessageBoxW(nullptr, problem.c_str(), L"Workbench", MB_OK | MB_ICONERROR);
    }
}

void interact(Application& application) {
    writeLine(STD_OUTPUT_HANDLE, application.replaySession());
    application.run();
}

void showPictures(Application& application, const CommandLine& line) {
    application.wantLog();
    const std::wstring summary = application.replaySession();
    Showcase showcase(application, line.file);
    showcase.show(summary);
    if (line.mode == CommandLine::kPictures) {
        showcase.showPlaces();
    } else if (line.mode == CommandLine::kTour) {
        showcase.showEverything();
    } else if (line.mode == CommandLine::kGlance) {
        showcase.showSome();
    }
    writeLine(STD_OUTPUT_HANDLE, summary);
}

void checkItself(Application& application, const CommandLine& line) {
    application.wantLog();
    SelfCheck selfCheck(application);
    selfCheck.run();
    writeFile(line.file, selfCheck.report());
    if (selfCheck.failed()) {
        throw Failure(L"The check failed, see " + line.file);
    }
}

void work(const CommandLine& line, SharedProject project) {
    const OleSession ole;
    if (line.mode != CommandLine::kInteractive) {
        SetEnvironmentVariableW(report::kUnattended, L"1");
    }
    Application application(std::move(project));
    switch (line.mode) {
    case CommandLine::kInteractive:
        interact(application);
        break;
    case CommandLine::kCheck:
        checkItself(application, line);
        break;
    default:
        showPictures(application, line);
        break;
    }
    application.close();
}

int run(const CommandLine& line) {
    if (!line.valid) {
        complain(line, L"Usage: workbench.exe [/auto | /pictures | /tour | /glance READYFILE] "
                       L"[/check REPORTFILE] PROJECT_DIR");
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
