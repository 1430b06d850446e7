#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "workbench/control_container.h"
#include "workbench/tool_panel.h"

namespace workbench {

/// What a tool window is, and what it has to offer to the log. The last three are for trying how the log gets
/// along with less.
enum class ToolKind { kMdiChild, kPlain, kNoHandle, kDeadHandle, kNoControls };

/// A window in which the user works with a tool. It contains ActiveX controls, by name; the one named "LogView"
/// gets the window's lower part when it is visible.
class ToolWindow : public std::enable_shared_from_this<ToolWindow> {
public:
    /// Where tool windows open: MDI children in `client`, plain windows owned by `frame`.
    struct Place {
        HWND frame;
        HWND client;
    };

    static std::shared_ptr<ToolWindow> open(const Place& place, ToolKind kind, const std::wstring& title,
                                            const SharedProject& project);
    ~ToolWindow();
    ToolWindow(const ToolWindow&) = delete;
    ToolWindow& operator=(const ToolWindow&) = delete;

    /// Called when the window has become the one that the user works in.
    std::function<void()> onActivate;
    /// Called when the user wants it closed; nothing happens unless `close` is called then.
    std::function<void()> onClose;
    /// Called when the user presses the panel's button.
    std::function<void()> onCheck;

    /// Null once the window is closed.
    HWND handle() const { return window_; }
    ToolKind kind() const { return kind_; }
    const ToolPanel& panel() const { return *panel_; }
    /// The window as the log sees it (tool_window_object.h), the same object each time.
    IDispatch* object() const { return object_.Get(); }

    /// Creates a control, hidden at first. Throws Failure when that fails or the name is taken.
    ControlContainer& addControl(const std::wstring& progId, const std::wstring& name);
    const std::vector<std::shared_ptr<ControlContainer>>& controls() const { return controls_; }
    /// Null when there is none of that name, in any case.
    ControlContainer* findControl(std::wstring_view name) const;

    void activate();
    void layOut();
    void rememberFocus();
    void setPointer(int pointer);
    int pointer() const { return pointer_; }
    /// Offers a message to the controls; true when one has used it.
    bool translateForControls(MSG& message) const;
    /// Offers a message to the keys by which users move between controls. Takes every message of the window.
    bool translateForDialog(MSG& message) const { return IsDialogMessageW(window_, &message) != FALSE; }

    /// Closes the controls, then the window.
    void close();

private:
    ToolWindow(ToolKind kind, SharedProject project) : kind_(kind), project_(std::move(project)) {}
    void create(const Place& place, const std::wstring& title);
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static ToolWindow* ofNewWindow(HWND window, const CREATESTRUCTW& creation);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT usual(UINT message, WPARAM wParam, LPARAM lParam) const;
    bool isMdiChild() const { return kind_ != ToolKind::kPlain; }
    void activated() const;
    void watchActivation(UINT message, WPARAM wParam, LPARAM lParam);
    void restoreFocus() const;
    /// The lower part of the window.
    RECT logArea() const;
    void resolutionChanged(const RECT* area);

    ToolKind kind_;
    SharedProject project_;
    HWND window_ = nullptr;
    HWND client_ = nullptr;
    HWND lastFocus_ = nullptr;
    std::unique_ptr<ToolPanel> panel_;
    std::vector<std::shared_ptr<ControlContainer>> controls_;
    ComPtr<IDispatch> object_;
    int pointer_ = 0;
};

} // namespace workbench
