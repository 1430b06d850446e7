#include "workbench/log_menu.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/menu_ids.h"

namespace workbench {

namespace {

struct SampleReport {
    long returnCode;
    const wchar_t* message;
};

// One for each outcome that the log knows, in the order of the menu.
constexpr SampleReport kSampleReports[] = {
    {0, L"Nothing to complain about"},
    {1, L"2 warnings"},
    {2, L"1 error"},
    {-1, L"The tool failed"},
    {-2, L"The tool took too long"},
    {-3, L"Canceled on request"},
    {-4, L"Queue canceled"},
};
static_assert(std::size(kSampleReports) == IDM_REPORT_LAST - IDM_REPORT_FIRST + 1);

void checkItem(HMENU menu, UINT id, bool checked) {
    CheckMenuItem(menu, id, checked ? MF_CHECKED : MF_UNCHECKED);
}

} // namespace

LogMenu::LogMenu(ComPtr<IDispatch> log, ComPtr<IDispatch> workspace, ToolWindows& tools,
                 SharedProject project)
    : log_(std::move(log)), workspace_(std::move(workspace)), tools_(tools), project_(std::move(project)) {}

bool LogMenu::run(WORD id) { return runPlacement(id) || runReports(id); }

bool LogMenu::runPlacement(WORD id) {
    switch (id) {
    case IDM_LOG_VISIBLE:
        toggle(L"Visible");
        return true;
    case IDM_LOG_DOCKED:
        toggle(L"Docked");
        return true;
    case IDM_LOG_PARENT:
        setParent(tools_.active());
        return true;
    case IDM_LOG_NO_PARENT:
        follows_ = false; // or the next click would undo it
        setParent(nullptr);
        return true;
    case IDM_LOG_FOLLOW:
        follows_ = !follows_;
        followActiveTool();
        return true;
    case IDM_LOG_FOCUS:
        call(log_.Get(), L"SetFocus");
        return true;
    case IDM_LOG_MOVE:
        moveHostWindow();
        return true;
    case IDM_LOG_DOCK:
        call(log_.Get(), L"Dock", {Variant(tools_.active() ? tools_.active()->object() : nullptr)});
        return true;
    default:
        return false;
    }
}

bool LogMenu::runReports(WORD id) {
    switch (id) {
    case IDM_LOG_START:
        call(log_.Get(), L"SeriesStart", {project_->methods.empty() ? L"" : project_->methods.front().id});
        return true;
    case IDM_LOG_FINISH:
        call(log_.Get(), L"SeriesFinish", {0});
        return true;
    case IDM_LOG_OPEN:
        if (!openDatabase()) {
            throw Failure(L"The log cannot open the database");
        }
        followActiveTool(); // a log that opens a database has no parent
        return true;
    case IDM_LOG_CLOSE:
        call(log_.Get(), L"CloseDB");
        return true;
    default:
        if (id < IDM_REPORT_FIRST || id > IDM_REPORT_LAST) {
            return false;
        }
        report(static_cast<size_t>(id - IDM_REPORT_FIRST));
        return true;
    }
}

void LogMenu::update(HMENU menu) const {
    checkItem(menu, IDM_LOG_VISIBLE, holds(L"Visible"));
    checkItem(menu, IDM_LOG_DOCKED, holds(L"Docked"));
    checkItem(menu, IDM_LOG_FOLLOW, follows_);
}

bool LogMenu::openDatabase() {
    IDispatch* workspace = workspace_.Get();
    return call(log_.Get(), L"OpenDB", {Variant::byReference(workspace)}).boolean();
}

void LogMenu::leave() {
    setParent(nullptr);
    put(log_.Get(), L"Visible", false); // the window of a log without a parent, wherever that went
}

void LogMenu::followActiveTool() {
    if (follows_) {
        setParent(tools_.active());
    }
}

void LogMenu::setParent(ToolWindow* tool) {
    putReference(log_.Get(), L"Parent", tool ? tool->object() : nullptr);
}

void LogMenu::report(size_t sample) {
    const ToolWindow* tool = tools_.active();
    call(log_.Get(), L"Add",
         {project_->methods.empty() ? L"" : project_->methods.front().id, kSampleReports[sample].returnCode,
          tool ? tool->panel().chosenObject() : L"", kSampleReports[sample].message});
}

void LogMenu::toggle(const wchar_t* property) {
    put(log_.Get(), property, !get(log_.Get(), property).boolean());
}

/// False also when the log cannot say: choosing the item tells why.
bool LogMenu::holds(const wchar_t* property) const {
    try {
        return get(log_.Get(), property).boolean();
    } catch (const Failure&) {
        return false;
    }
}

void LogMenu::moveHostWindow() {
    constexpr double kInch = 1440.0;
    call(log_.Get(), L"Move", {kInch / 4, kInch / 4, 8 * kInch, 5 * kInch});
}

} // namespace workbench
