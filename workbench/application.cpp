#include "workbench/application.h"

#include <commctrl.h>

#include <cwchar>
#include <iterator>

#include "workbench/com_call.h"
#include "workbench/console.h"
#include "workbench/database_file.h"
#include "workbench/failure.h"
#include "workbench/host_objects.h"
#include "workbench/replay.h"
#include "workbench/text.h"

namespace workbench {

namespace {

// The events of CVLog: {8C418AE9-D9C0-41C6-9C63-24D190B4E58E}
constexpr IID kLogEvents{0x8c418ae9, 0xd9c0, 0x41c6, {0x9c, 0x63, 0x24, 0xd1, 0x90, 0xb4, 0xe5, 0x8e}};
enum LogEvent : DISPID { kLogChanged = 1, kGotFocus, kLostFocus, kShowErrors, kUnload, kKeyDown };

constexpr ULONGLONG kSettleMilliseconds = 300;

double secondsSince(const LARGE_INTEGER& start) {
    LARGE_INTEGER now;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void writeFile(const std::wstring& path, const std::wstring& line) {
    // Written aside and renamed, so that who waits for the file finds it whole.
    const std::wstring draft = path + L".new";
    const HANDLE file = CreateFileW(draft.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw Failure(path + L": the file cannot be written");
    }
    const std::string bytes = toUtf8(line) + "\n";
    DWORD written = 0;
    const BOOL done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    if (!done || !MoveFileExW(draft.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        throw Failure(path + L": the file cannot be written");
    }
}

bool exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

} // namespace

Application::Application(SharedProject project)
    : project_(std::move(project)), window_(project_->workbenchName + L" - " + project_->projectName) {
    createDatabaseIfMissing(project_->file(L"PrjData.mdb"));
    workspace_ = makeWorkspace(project_, window_);
    window_.onReplay = [this] { replaySession(); };
    try {
        openLog();
        window_.createControl(L"CVLog3.CVLogControl");
        window_.show();
    } catch (const std::exception&) {
        window_.closeControl();
        events_.reset();
        throw;
    }
}

Application::~Application() {
    try {
        close();
    } catch (const std::exception&) {
        window_.closeControl(); // the log could not close its database; the rest still goes in order
    }
}

void Application::openLog() {
    check(createObject(L"CVLog3.CVLog").As(&log_), L"Asking the log for automation");
    events_ = std::make_unique<EventConnection>(
        log_.Get(), kLogEvents,
        [this](DISPID event, const Arguments& arguments) { onEvent(event, arguments); });

    IDispatch* workspace = workspace_.Get();
    if (!call(log_.Get(), L"OpenDB", {Variant::byReference(workspace)}).boolean()) {
        throw Failure(project_->file(L"PrjData.mdb") + L": the log cannot open the database");
    }
}

void Application::onEvent(DISPID event, const Arguments& arguments) {
    switch (event) {
    case kLogChanged:
        ++changes_;
        window_.showEvent(L"Log changed");
        break;
    case kGotFocus:
        window_.showEvent(L"Log has the focus");
        break;
    case kLostFocus:
        window_.showEvent(L"Log lost the focus");
        break;
    case kShowErrors: {
        const RepositoryEntry* object = project_->findObject(arguments.text(0));
        const std::wstring name = object ? object->displayName : arguments.text(0);
        const long number = arguments.integer(1);
        window_.showEvent(number ? L"Show error " + std::to_wstring(number) + L" of " + name
                                 : L"Show errors of " + name);
        break;
    }
    case kUnload:
        window_.showEvent(L"Log closes");
        break;
    default:
        break; // keys are the log's own business
    }
}

long Application::rowsShown() const {
    const long handle = get(window_.control()->control().Get(), L"hwnd").integer();
    const auto list = reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle));
    return static_cast<long>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

std::wstring Application::replaySession() {
    const long before = highestRecord(log_.Get());
    const long changesBefore = changes_;
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    replay(log_.Get(), project_->session);
    const double seconds = secondsSince(start);

    const long rows = rowsShown();
    const long records = recordsAbove(log_.Get(), before);
    wchar_t line[160];
    swprintf(line, std::size(line), L"%ld rows shown, %ld records stored, %ld events received, %.2f s", rows,
             records, changes_ - changesBefore, seconds);
    window_.showCounts(std::to_wstring(rows) + L" rows, " + std::to_wstring(records) + L" records");
    return line;
}

void Application::run() {
    window_.focusControl();
    window_.runUntil([] { return false; });
}

void Application::runUntilRemoved(const std::wstring& readyFile, const std::wstring& line) {
    window_.focusControl();
    window_.pump();
    RedrawWindow(window_.handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    const ULONGLONG painted = GetTickCount64();
    window_.runUntil([&] { return GetTickCount64() - painted >= kSettleMilliseconds; });

    writeFile(readyFile, line);
    writeLine(STD_OUTPUT_HANDLE, line);
    window_.runUntil([&] { return !exists(readyFile); });
}

void Application::close() {
    if (!log_) {
        return;
    }
    const ComPtr<IDispatch> log = std::move(log_);
    window_.onReplay = nullptr;
    call(log.Get(), L"CloseDB");
    window_.closeControl();
    events_.reset();
}

} // namespace workbench
