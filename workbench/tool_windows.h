#pragma once

#include "workbench/frame_window.h"
#include "workbench/tool_window.h"

namespace workbench {

/// The open tool windows, from the one that was active longest ago to the active one.
class ToolWindows {
public:
    ToolWindows(FrameWindow& frame, SharedProject project) : frame_(frame), project_(std::move(project)) {}
    ~ToolWindows() { closeAll(); }
    ToolWindows(const ToolWindows&) = delete;
    ToolWindows& operator=(const ToolWindows&) = delete;

    /// Called when another window has become the active one, or there is none any more. On closing it comes before
    /// the closed window and its controls go.
    std::function<void()> onActiveChanged;
    /// Called when the user wants the object checked that is chosen in the active window.
    std::function<void()> onCheck;

    ToolWindow& open(ToolKind kind);
    void close(ToolWindow& tool);
    void closeAll();

    size_t count() const { return tools_.size(); }
    /// 1-based; throws Failure when there is no such window.
    ToolWindow& at(long index) const;
    /// Null when none is open.
    ToolWindow* active() const { return tools_.empty() ? nullptr : tools_.back().get(); }
    /// The one that `window` is or lies in; null when there is none.
    std::shared_ptr<ToolWindow> containing(HWND window) const;

    void rememberFocus() const;

private:
    void activated(const ToolWindow& tool);
    void tellActive();

    FrameWindow& frame_;
    SharedProject project_;
    std::vector<std::shared_ptr<ToolWindow>> tools_;
    const ToolWindow* told_ = nullptr; // the active one when `onActiveChanged` was last called
    int opened_ = 0;
};

} // namespace workbench
