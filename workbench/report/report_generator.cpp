#include "workbench/report/report_generator.h"

#include <shellapi.h>

#include <memory>
#include <string>

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/output_file.h"
#include "workbench/report/list_reader.h"
#include "workbench/report/progress_window.h"
#include "workbench/script_object.h"
#include "workbench/text.h"

namespace workbench::report {

namespace {

struct Report {
    std::wstring name = L"Report";
    std::wstring page;
    std::wstring directory;
    bool interrupted = false;
};

std::wstring titleOf(const std::wstring& name) {
    if (sameName(name, L"Log")) {
        return L"Activity Log";
    }
    return sameName(name, L"LogHistory") ? std::wstring(L"Activity Log History") : name;
}

std::wstring now() {
    SYSTEMTIME time;
    GetLocalTime(&time);
    wchar_t text[32];
    wsprintfW(text, L"%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
              time.wMinute, time.wSecond);
    return text;
}

/// The name as the name of a file.
std::wstring fileName(std::wstring name) {
    for (wchar_t& unit : name) {
        if (unit < 0x20 || std::wstring_view(L"\\/:*?\"<>|").find(unit) != std::wstring_view::npos) {
            unit = L'_';
        }
    }
    return name.empty() ? std::wstring(L"Report") : name;
}

void create(Report& report, IDispatch* list, const std::wstring& name) {
    report.name = name;
    report.page.clear();
    Table table;
    table.title = titleOf(name);
    table.made = now();
    ProgressWindow window;
    report.interrupted = !readList(list, table, [&](long done, long all) { return window.show(done, all); });
    if (!report.interrupted) {
        report.page = makePage(table);
    }
}

std::wstring write(const Report& report) {
    std::wstring directory = report.directory;
    if (directory.empty()) {
        wchar_t temporary[MAX_PATH + 1];
        GetTempPathW(MAX_PATH + 1, temporary);
        directory = temporary;
    }
    if (directory.back() != L'\\' && directory.back() != L'/') {
        directory += L'\\';
    }
    CreateDirectoryW(directory.c_str(), nullptr); // is mostly there
    const std::wstring path = directory + fileName(report.name) + L".html";
    writeFile(path, report.page);
    return path;
}

void display(const Report& report, IDispatch* owner) {
    if (report.page.empty()) {
        throw Failure(L"There is no report");
    }
    const std::wstring path = write(report);
    if (GetEnvironmentVariableW(kUnattended, nullptr, 0) != 0) {
        return;
    }
    const HWND window =
        owner ? reinterpret_cast<HWND>(static_cast<LONG_PTR>(get(owner, L"hwnd").integer())) : nullptr;
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(window, L"open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    if (result <= 32) {
        throw Failure(path + L": the report cannot be opened");
    }
}

} // namespace

ComPtr<IDispatch> makeReportGenerator() {
    const auto report = std::make_shared<Report>();
    auto generator = makeObject<ScriptObject>();
    generator->member(L"CreateReport", [report](const Arguments& arguments) {
        create(*report, arguments.value(0).object().Get(), arguments.text(1));
        return Variant();
    });
    generator->member(L"Interrupted", [report](const Arguments&) { return Variant(report->interrupted); });
    generator->property(
        L"OutputDirectory", [report](const Arguments&) { return Variant(report->directory); },
        [report](const Arguments& arguments) {
            report->directory = arguments.text(0);
            return Variant();
        });
    generator->member(L"DisplayReport", [report](const Arguments& arguments) {
        display(*report, arguments.count() > 0 ? arguments.value(0).object().Get() : nullptr);
        return Variant();
    });
    return ComPtr<IDispatch>(static_cast<IDispatch*>(generator.Get()));
}

} // namespace workbench::report
