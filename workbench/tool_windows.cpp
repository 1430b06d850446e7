#include "workbench/tool_windows.h"

#include <algorithm>
#include <utility>

#include "workbench/failure.h"

namespace workbench {

namespace {

std::wstring titleOf(ToolKind kind) {
    switch (kind) {
    case ToolKind::kPlain:
        return L"Plain tool";
    case ToolKind::kNoHandle:
        return L"Tool without a handle";
    case ToolKind::kDeadHandle:
        return L"Tool with a dead handle";
    case ToolKind::kNoControls:
        return L"Tool that takes no controls";
    default:
        return L"Tool";
    }
}

} // namespace

ToolWindow& ToolWindows::open(ToolKind kind) {
    const std::wstring title = titleOf(kind) + L" " + std::to_wstring(++opened_);
    const auto tool = ToolWindow::open({frame_.handle(), frame_.client()}, kind, title, project_);
    ToolWindow& opened = *tool;
    opened.onActivate = [this, &opened] { activated(opened); };
    opened.onClose = [this, &opened] { close(opened); };
    opened.onCheck = [this] {
        if (onCheck) {
            onCheck();
        }
    };
    tools_.insert(tools_.begin(), tool);
    opened.activate();
    return opened;
}

void ToolWindows::activated(const ToolWindow& tool) {
    const auto found =
        std::find_if(tools_.begin(), tools_.end(), [&](const auto& open) { return open.get() == &tool; });
    if (found == tools_.end()) {
        return; // it is being closed
    }
    std::rotate(found, found + 1, tools_.end());
    tellActive();
}

void ToolWindows::tellActive() {
    if (std::exchange(told_, active()) != active() && onActiveChanged) {
        onActiveChanged();
    }
}

void ToolWindows::close(ToolWindow& tool) {
    const std::shared_ptr<ToolWindow> closing = tool.shared_from_this();
    const bool wasActive = active() == &tool;
    std::erase(tools_, closing);
    tellActive();
    closing->close();
    if (ToolWindow* next = active(); next && wasActive) {
        next->activate();
    }
}

void ToolWindows::closeAll() {
    while (!tools_.empty()) {
        close(*tools_.back());
    }
}

ToolWindow& ToolWindows::at(long index) const {
    if (index < 1 || static_cast<size_t>(index) > tools_.size()) {
        throw Failure(L"There is no tool window " + std::to_wstring(index), DISP_E_BADINDEX);
    }
    return *tools_[static_cast<size_t>(index) - 1];
}

std::shared_ptr<ToolWindow> ToolWindows::containing(HWND window) const {
    const auto found = std::find_if(tools_.begin(), tools_.end(), [&](const auto& tool) {
        return tool->handle() == window || IsChild(tool->handle(), window);
    });
    return found == tools_.end() ? nullptr : *found;
}

void ToolWindows::rememberFocus() const {
    for (const auto& tool : tools_) {
        tool->rememberFocus();
    }
}

} // namespace workbench
