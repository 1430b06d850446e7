#include "workbench/application.h"

#include <commctrl.h>

#include <cwchar>
#include <iterator>

#include "workbench/com_call.h"
#include "workbench/database_file.h"
#include "workbench/failure.h"
#include "workbench/host_objects.h"
#include "workbench/menu_ids.h"
#include "workbench/replay.h"

namespace workbench {

namespace {

// The events of CVLog: {8C418AE9-D9C0-41C6-9C63-24D190B4E58E}
constexpr IID kLogEvents{0x8c418ae9, 0xd9c0, 0x41c6, {0x9c, 0x63, 0x24, 0xd1, 0x90, 0xb4, 0xe5, 0x8e}};
enum LogEvent : DISPID { kLogChanged = 1, kGotFocus, kLostFocus, kShowErrors, kUnload, kKeyDown };

double secondsSince(const LARGE_INTEGER& start) {
    LARGE_INTEGER now;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

} // namespace

Application::Application(SharedProject project)
    : project_(std::move(project)), frame_(project_->workbenchName + L" - " + project_->projectName),
      tools_(frame_, project_) {
    createDatabaseIfMissing(project_->file(L"PrjData.mdb"));
    workspace_ = makeWorkspace(project_, frame_, tools_, [this] {
        if (onCodeAsked) {
            onCodeAsked();
        }
    });
    options_ = get(workspace_.Get(), L"UserOptions").object();
    try {
        openLog();
        connect();
        frame_.show(); // first: only what is visible takes the focus
        tools_.open(ToolKind::kMdiChild);
        addLogControl();
    } catch (const std::exception&) {
        close();
        throw;
    }
}

Application::~Application() {
    try {
        close();
    } catch (const std::exception&) {
        tools_.closeAll(); // the log could not close its database; the rest still goes in order
        events_.reset();
    }
}

void Application::openLog() {
    check(createObject(L"CVLog3.CVLog").As(&log_), L"Asking the log for automation");
    events_ = std::make_unique<EventConnection>(
        log_.Get(), kLogEvents,
        [this](DISPID event, const Arguments& arguments) { onEvent(event, arguments); });
    logMenu_ = std::make_unique<LogMenu>(log_, workspace_, tools_, project_);
    errorsMenu_ = std::make_unique<ErrorsMenu>(log_, workspace_, frame_, tools_, project_);
    if (!logMenu_->openDatabase()) {
        throw Failure(project_->file(L"PrjData.mdb") + L": the log cannot open the database");
    }
}

void Application::connect() {
    frame_.onCommand = [this](WORD id) { command(id); };
    frame_.onMenuOpens = [this](HMENU menu) { logMenu_->update(menu); };
    frame_.onLeave = [this] { tools_.rememberFocus(); };
    frame_.onMessage = [this](MSG& message) { return translate(message); };
    tools_.onActiveChanged = [this] { attempt([this] { logMenu_->followActiveTool(); }); };
    tools_.onCheck = [this] { attempt([this] { logMenu_->report(0); }); };
}

/// What the user sets off must not end the program: the status bar tells what failed.
void Application::attempt(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        frame_.showStatus(FrameWindow::kNews, failure.message());
    } catch (const std::exception&) {
        frame_.showStatus(FrameWindow::kNews, L"Out of memory");
    }
}

/// Gives the active tool window a log of its own, as the log does where it is docked.
void Application::addLogControl() {
    ToolWindow* tool = tools_.active();
    if (!tool) {
        throw Failure(L"No tool window is open");
    }
    if (!tool->findControl(L"LogView")) {
        tool->addControl(L"CVLog3.CVLogControl", L"LogView").show(true);
    }
    tool->layOut();
}

void Application::command(WORD id) {
    attempt([&] {
        if (!logMenu_->run(id) && !errorsMenu_->run(id)) {
            ownCommand(id);
        }
    });
}

void Application::ownCommand(WORD id) {
    if (id >= IDM_TOOL_FIRST && id <= IDM_TOOL_LAST) {
        tools_.open(static_cast<ToolKind>(id - IDM_TOOL_FIRST));
        return;
    }
    switch (id) {
    case IDM_REPLAY:
        replaySession();
        break;
    case IDM_OPTIONS:
        showOptions();
        break;
    case IDM_EXIT:
        frame_.close();
        break;
    case IDM_TOOL_ADD_LOG:
        addLogControl();
        break;
    case IDM_TOOL_CLOSE:
        if (ToolWindow* tool = tools_.active()) {
            tools_.close(*tool);
        }
        break;
    default:
        break;
    }
}

OptionsDialog& Application::showOptions() {
    if (!dialog_) {
        dialog_ = std::make_unique<OptionsDialog>(frame_.handle(), options_);
        dialog_->show();
    }
    return *dialog_;
}

/// Who comes first has the first choice of a key: the open dialog, the active control, the menu, the keys that move
/// within a window.
bool Application::translate(MSG& message) {
    if (dialog_ && dialog_->closed()) {
        dialog_.reset();
    }
    if (dialog_ && dialog_->translate(message)) {
        return true;
    }
    bool used = false;
    attempt([&] { used = errorsMenu_->translate(message); });
    if (used) {
        return true;
    }
    const std::shared_ptr<ToolWindow> tool = tools_.containing(message.hwnd);
    if (tool && tool->translateForControls(message)) {
        return true;
    }
    // The floating log belongs to the frame as the tool windows do: the menu's keys work there too.
    const bool ours = tool || GetAncestor(message.hwnd, GA_ROOTOWNER) == frame_.handle();
    return (ours && frame_.translateKey(message)) ||
           (tool && tool->handle() && tool->translateForDialog(message));
}

void Application::onEvent(DISPID event, const Arguments& arguments) {
    switch (event) {
    case kLogChanged:
        frame_.showStatus(FrameWindow::kChanges, L"Changes: " + std::to_wstring(++changes_));
        break;
    case kGotFocus:
        frame_.showStatus(FrameWindow::kFocus, L"Focus: log");
        break;
    case kLostFocus:
        frame_.showStatus(FrameWindow::kFocus, L"");
        break;
    case kShowErrors:
        attempt([&] { errorsMenu_->showErrors(arguments.text(0), arguments.integer(1)); });
        break;
    case kUnload:
        frame_.showStatus(FrameWindow::kNews, L"Log closes");
        break;
    default:
        break; // keys are the log's own business
    }
}

/// All lists of the log show the same rows: those of the first that is found.
long Application::rowsShown() const {
    for (size_t i = tools_.count(); i > 0; --i) {
        if (const ControlContainer* view = tools_.at(static_cast<long>(i)).findControl(L"LogView")) {
            const long handle = get(view->object().Get(), L"hwnd").integer();
            const auto list = reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle));
            return static_cast<long>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
        }
    }
    return 0;
}

void Application::wantLog() {
    attempt([this] { put(log_.Get(), L"Visible", true); });
}

std::wstring Application::replaySession() {
    const long before = highestRecord(log_.Get());
    const long changesBefore = changes_;
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    replay(log_.Get(), project_->session);
    const double seconds = secondsSince(start);
    for (const Command& command : project_->session) {
        if (const auto* report = std::get_if<AddReport>(&command)) {
            errorsMenu_->reported(report->objectId, report->errorsFileName);
        }
    }

    const long rows = rowsShown();
    const long records = recordsAbove(log_.Get(), before);
    wchar_t line[160];
    swprintf(line, std::size(line), L"%ld rows shown, %ld records stored, %ld events received, %.2f s", rows,
             records, changes_ - changesBefore, seconds);
    frame_.showStatus(FrameWindow::kCounts,
                      std::to_wstring(rows) + L" rows, " + std::to_wstring(records) + L" records");
    return line;
}

void Application::run() {
    frame_.runUntil([] { return false; });
}

void Application::close() {
    dialog_.reset();
    if (!log_) {
        return;
    }
    const ComPtr<IDispatch> log = std::move(log_);
    frame_.onCommand = nullptr;
    frame_.onMenuOpens = nullptr;
    frame_.onMessage = nullptr;
    tools_.onActiveChanged = nullptr;
    tools_.onCheck = nullptr;
    events_.reset(); // what the log tells from here on concerns nobody
    errorsMenu_.reset();
    attempt([&] { logMenu_->leave(); });
    logMenu_.reset();
    call(log.Get(), L"CloseDB");
    tools_.closeAll();
}

} // namespace workbench
