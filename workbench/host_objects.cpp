#include "workbench/host_objects.h"

#include "workbench/failure.h"
#include "workbench/options_document.h"
#include "workbench/text.h"
#include "workbench/window_objects.h"

namespace workbench {

namespace {

// What GetCalvettaName is asked for.
enum NameKind : long { kProjectDirectory = 4, kProjectName = 6, kBaseDirectory = 16 };

/// The directory of the program; `Repository\Icons` lies below it.
std::wstring baseDirectory() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring calvettaName(const ProjectFolder& project, long kind) {
    switch (kind) {
    case kProjectDirectory:
        return project.directory;
    case kProjectName:
        return project.projectName;
    case kBaseDirectory:
        return baseDirectory();
    default:
        throw Failure(L"There is no name of kind " + std::to_wstring(kind), E_INVALIDARG);
    }
}

std::wstring outcomeWording(long code) {
    switch (code) {
    case -4:
        return L"Queue canceled";
    case -3:
    case 16:
        return L"Canceled";
    case -2:
        return L"Timed out";
    case -1:
        return L"Failed";
    case 0:
        return L"OK";
    case 1:
        return L"Warnings";
    case 2:
        return L"Errors";
    default:
        return L"Code " + std::to_wstring(code);
    }
}

std::wstring translateReturnCode(const ProjectFolder& project, const Variant& code) {
    if (code.raw().vt != VT_BSTR) {
        return outcomeWording(code.integer());
    }
    const std::wstring text = code.text();
    if (const auto found = project.codes.find(text); found != project.codes.end()) {
        return found->second;
    }
    long number = 0;
    return parseNumber(text, number) ? outcomeWording(number) : text;
}

std::wstring productInfo(const ProjectFolder& project, const std::wstring& name) {
    if (sameName(name, L"Product.Name")) {
        return project.productName;
    }
    if (sameName(name, L"Workbench.Name")) {
        return project.workbenchName;
    }
    throw Failure(L"There is no product information named " + name, E_INVALIDARG);
}

void addProject(ScriptObject& workspace, const SharedProject& project) {
    workspace.constant(L"UserOptions", makeOptionsDocument(project->file(L"options.xml")));
    workspace.constant(L"Repository", makeRepository(project));
    workspace.constant(L"Methods", makeMethods(project));
    workspace.member(L"ProjectObject", [=](const Arguments&) -> Variant {
        const RepositoryEntry* entry = project->projectObject();
        return entry ? Variant(makeRepositoryObject(project, entry)) : Variant();
    });
}

void addNames(ScriptObject& workspace, const SharedProject& project) {
    workspace.member(L"GetCalvettaName", [=](const Arguments& arguments) -> Variant {
        return calvettaName(*project, arguments.integer(0));
    });
    workspace.member(L"GetProductInfo", [=](const Arguments& arguments) -> Variant {
        return productInfo(*project, arguments.text(0));
    });
    workspace.member(L"GetHelpFile", [](const Arguments& arguments) -> Variant {
        return baseDirectory() + L"\\" + arguments.text(0);
    });
}

void addWindows(ScriptObject& workspace, FrameWindow& frame, const ToolWindows& tools) {
    workspace.constant(L"CalvettaWindow", makeMainWindowObject(frame));
    workspace.constant(L"ActiveToolList", makeToolList(tools));
    workspace.member(L"SetMainWindowCursor", [&](const Arguments& arguments) {
        const int before = frame.pointer();
        frame.setPointer(arguments.integer(0));
        return Variant(before);
    });
}

} // namespace

ComPtr<IDispatch> makeWorkspace(const SharedProject& project, FrameWindow& frame, const ToolWindows& tools,
                                std::function<void()> onCodeAsked) {
    auto workspace = makeObject<ScriptObject>();
    addProject(*workspace.Get(), project);
    addNames(*workspace.Get(), project);
    workspace->member(L"TranslateReturnCode",
                      [=, asked = std::move(onCodeAsked)](const Arguments& arguments) -> Variant {
                          asked();
                          return translateReturnCode(*project, arguments.value(0));
                      });
    addWindows(*workspace.Get(), frame, tools);
    return workspace;
}

} // namespace workbench
