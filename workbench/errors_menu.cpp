#include "workbench/errors_menu.h"

#include "workbench/com_call.h"
#include "workbench/errors_writer.h"
#include "workbench/existing_file.h"
#include "workbench/failure.h"
#include "workbench/log_list.h"
#include "workbench/menu_ids.h"
#include "workbench/text.h"

namespace workbench {

namespace {} // namespace

ErrorsMenu::ErrorsMenu(ComPtr<IDispatch> log, ComPtr<IDispatch> workspace, FrameWindow& frame,
                       ToolWindows& tools, SharedProject project)
    : log_(std::move(log)), workspace_(std::move(workspace)), frame_(frame), tools_(tools),
      project_(std::move(project)) {}

bool ErrorsMenu::run(WORD id) {
    switch (id) {
    case IDM_ERRORS_SHOW:
        showErrors(chosenObject(), 0);
        return true;
    case IDM_ERRORS_WRITE:
        askForLines();
        return true;
    case IDM_ERRORS_DELETE:
        changeObject(chosenObject());
        return true;
    default:
        return false;
    }
}

bool ErrorsMenu::translate(MSG& message) {
    if (dialog_ && dialog_->closed()) {
        const std::unique_ptr<LinesDialog> dialog = std::move(dialog_);
        EnableWindow(frame_.handle(), TRUE);
        ShowWindow(dialog->handle(), SW_HIDE);
        dialog->tellAnswer();
    }
    return (dialog_ && dialog_->translate(message)) || (window_ && window_->translate(message));
}

LinesDialog& ErrorsMenu::askForLines() {
    if (!dialog_) {
        dialog_ = std::make_unique<LinesDialog>(frame_.handle(), [this](long lines) { reportErrors(lines); });
        dialog_->show();
    }
    return *dialog_;
}

std::wstring ErrorsMenu::chosenObject() const {
    const ToolWindow* tool = tools_.active();
    const std::wstring object = tool ? tool->panel().chosenObject() : std::wstring();
    if (object.empty()) {
        throw Failure(L"No object is chosen");
    }
    return object;
}

void ErrorsMenu::reported(const std::wstring& objectId, const std::wstring& file) {
    if (!file.empty()) {
        files_[objectId] = project_->file(file.c_str());
    }
}

/// The row knows best: an object may have had other errors when it was reported earlier.
std::wstring ErrorsMenu::fileOfSelectedRow(const std::wstring& objectId) const {
    const HWND focus = GetFocus();
    for (size_t i = tools_.count(); i > 0; --i) {
        const ControlContainer* view = tools_.at(static_cast<long>(i)).findControl(L"LogView");
        if (view && focus && LogList(view->object().Get()).window() == focus) {
            const LogList list(view->object().Get());
            const long row = list.selected();
            return row && sameName(list.objectOf(row), objectId) ? list.errorsFileOf(row) : L"";
        }
    }
    return L"";
}

/// The name that the log goes by when it is told none.
std::wstring ErrorsMenu::derivedFile(const std::wstring& objectId) const {
    const RepositoryEntry* object = project_->findObject(objectId);
    if (!object) {
        return L"";
    }
    const auto property = object->properties.find(project_->entityTypes[object->entityType].keyProperty);
    return property == object->properties.end() ? L""
                                                : project_->file((property->second + L".errors").c_str());
}

std::wstring ErrorsMenu::errorsFileOf(const std::wstring& objectId) const {
    std::wstring file = fileOfSelectedRow(objectId);
    if (file.empty()) {
        const auto known = files_.find(objectId);
        file = known == files_.end() ? derivedFile(objectId) : known->second;
    }
    return file;
}

std::wstring ErrorsMenu::nameOf(const std::wstring& objectId) const {
    const RepositoryEntry* object = project_->findObject(objectId);
    return object && !object->displayName.empty() ? object->displayName : objectId;
}

void ErrorsMenu::showErrors(const std::wstring& objectId, long number) {
    const std::wstring name = nameOf(objectId);
    const std::wstring file = errorsFileOf(objectId);
    if (!exists(file)) {
        throw Failure(name + L" has no errors");
    }
    ErrorMessages messages(file, HiddenKinds(get(workspace_.Get(), L"UserOptions").object().Get()));
    if (!window_) {
        window_ = std::make_unique<ErrorsWindow>(frame_.handle(), project_);
    }
    frame_.showStatus(FrameWindow::kNews,
                      number ? L"Error " + std::to_wstring(number) + L" of " + name : L"Errors of " + name);
    window_->show(name, std::move(messages), number);
}

void ErrorsMenu::reportErrors(long lines) {
    const std::wstring object = chosenObject();
    const std::wstring file = L"generated-" + std::to_wstring(lines) + L".errors";
    writeErrorsFile(project_->file(file.c_str()), *project_, lines);
    reported(object, file);
    const std::wstring method = project_->methods.empty() ? L"" : project_->methods.front().id;
    call(log_.Get(), L"Add", {method, 2, object, std::to_wstring(lines) + L" messages", file});
}

/// What a tool does that clears an object's errors up: the file goes, and the repository tells of the change.
void ErrorsMenu::changeObject(const std::wstring& objectId) {
    const std::wstring file = errorsFileOf(objectId);
    if (exists(file) && !DeleteFileW(file.c_str())) {
        throw Failure(file + L": the file cannot be deleted");
    }
    call(get(workspace_.Get(), L"Repository").object().Get(), L"Changed", {objectId});
    frame_.showStatus(FrameWindow::kNews, nameOf(objectId) + L" has changed; its errors file is gone");
}

} // namespace workbench
