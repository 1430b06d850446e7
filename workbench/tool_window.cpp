#include "workbench/tool_window.h"

#include <algorithm>

#include "workbench/failure.h"
#include "workbench/menu_ids.h"
#include "workbench/mouse_pointer.h"
#include "workbench/screen_scale.h"
#include "workbench/text.h"
#include "workbench/tool_window_object.h"

namespace workbench {

namespace {

constexpr const wchar_t* kToolClass = L"WorkbenchTool";
constexpr UINT kDpiChangedAfterParent = 0x02E3;
constexpr int kRoomPercent = 90;  // of the frame's inside, for a new window
constexpr int kPanelPercent = 35; // of the window's height, when the log is shown below

void registerToolClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hIcon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_WORKBENCH));
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.lpszClassName = kToolClass;
    RegisterClassExW(&description);
}

bool startsChecking(WPARAM wParam) {
    return LOWORD(wParam) == ToolPanel::kCheckButton && HIWORD(wParam) == BN_CLICKED;
}

} // namespace

std::shared_ptr<ToolWindow> ToolWindow::open(const Place& place, ToolKind kind, const std::wstring& title,
                                             const SharedProject& project) {
    const std::shared_ptr<ToolWindow> tool(new ToolWindow(kind, project));
    tool->object_ = makeToolWindowObject(tool);
    tool->create(place, title);
    return tool;
}

ToolWindow::~ToolWindow() { close(); }

void ToolWindow::create(const Place& place, const std::wstring& title) {
    registerToolClass(&ToolWindow::windowProcedure);
    client_ = place.client;
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    RECT room;
    GetClientRect(client_, &room);
    const int width = MulDiv(room.right, kRoomPercent, 100);
    const int height = MulDiv(room.bottom, kRoomPercent, 100);
    HWND window = nullptr;
    if (isMdiChild()) {
        window = CreateWindowExW(WS_EX_MDICHILD | WS_EX_CONTROLPARENT, kToolClass, title.c_str(),
                                 WS_CHILD | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                                 CW_USEDEFAULT, width, height, client_, nullptr, instance, this);
    } else {
        RECT frame;
        GetWindowRect(place.frame, &frame);
        window = CreateWindowExW(WS_EX_CONTROLPARENT, kToolClass, title.c_str(),
                                 WS_POPUP | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                 frame.left + scaled(place.frame, 120), frame.top + scaled(place.frame, 120),
                                 width, height, place.frame, nullptr, instance, this);
    }
    if (!window) {
        throw Failure(L"The tool window cannot be created");
    }
    panel_ = std::make_unique<ToolPanel>(window, project_);
    lastFocus_ = panel_->list();
    layOut();
    ShowWindow(window, SW_SHOW);
}

void ToolWindow::close() {
    const auto controls = std::move(controls_);
    for (const auto& control : controls) {
        control->close();
    }
    if (const HWND window = std::exchange(window_, nullptr)) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        if (isMdiChild()) {
            SendMessageW(client_, WM_MDIDESTROY, reinterpret_cast<WPARAM>(window), 0);
        } else {
            DestroyWindow(window);
        }
    }
}

ControlContainer& ToolWindow::addControl(const std::wstring& progId, const std::wstring& name) {
    if (!window_) {
        throw Failure(L"The window is closed");
    }
    if (kind_ == ToolKind::kNoControls) {
        throw Failure(L"The window takes no controls");
    }
    if (findControl(name)) {
        throw Failure(L"The window has a control named " + name + L" already");
    }
    controls_.push_back(ControlContainer::create(window_, progId.c_str(), name, logArea()));
    return *controls_.back();
}

ControlContainer* ToolWindow::findControl(std::wstring_view name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const auto& control) { return sameName(control->name(), name); });
    return found == controls_.end() ? nullptr : found->get();
}

RECT ToolWindow::logArea() const {
    RECT area;
    GetClientRect(window_, &area);
    area.top = MulDiv(area.bottom, kPanelPercent, 100);
    return area;
}

void ToolWindow::layOut() {
    if (!window_ || !panel_ || IsIconic(window_)) {
        return;
    }
    RECT rest;
    GetClientRect(window_, &rest);
    ControlContainer* log = findControl(L"LogView");
    if (log && log->visible()) {
        const RECT area = logArea();
        rest.bottom = area.top;
        log->place(area);
    }
    panel_->place(rest);
}

void ToolWindow::activate() {
    rememberFocus();
    if (isMdiChild()) {
        if (IsIconic(window_)) {
            SendMessageW(client_, WM_MDIRESTORE, reinterpret_cast<WPARAM>(window_), 0);
        }
        SendMessageW(client_, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(window_), 0);
    }
    SetFocus(window_);
    activated(); // also when it was the front window already, and another kind of window the active one
}

void ToolWindow::activated() const {
    if (onActivate) {
        onActivate();
    }
}

void ToolWindow::setPointer(int pointer) {
    pointer_ = pointer;
    SetCursor(cursorFor(pointer));
}

void ToolWindow::rememberFocus() {
    const HWND focus = GetFocus();
    if (focus && IsChild(window_, focus)) {
        lastFocus_ = focus;
    }
}

void ToolWindow::restoreFocus() const {
    const bool usable = IsChild(window_, lastFocus_) && IsWindowVisible(lastFocus_);
    SetFocus(usable ? lastFocus_ : panel_->list());
}

bool ToolWindow::translateForControls(MSG& message) const {
    const auto controls = controls_; // the key may open or close some
    return std::any_of(controls.begin(), controls.end(),
                       [&](const auto& control) { return control->translate(message); });
}

void ToolWindow::resolutionChanged(const RECT* area) {
    if (area) {
        SetWindowPos(window_, nullptr, area->left, area->top, area->right - area->left,
                     area->bottom - area->top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    if (panel_) {
        panel_->updateFont();
    }
    layOut();
}

LRESULT ToolWindow::usual(UINT message, WPARAM wParam, LPARAM lParam) const {
    return isMdiChild() ? DefMDIChildProcW(window_, message, wParam, lParam)
                        : DefWindowProcW(window_, message, wParam, lParam);
}

/// The messages that tell whether the user works in this window; all of them go on to the usual handling.
void ToolWindow::watchActivation(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_MDIACTIVATE:
        if (reinterpret_cast<HWND>(lParam) == window_) {
            activated();
        } else {
            rememberFocus();
        }
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE) {
            rememberFocus();
        } else {
            activated();
        }
        break;
    case WM_MOUSEACTIVATE:
        activated(); // the front MDI child gets no WM_MDIACTIVATE when the user comes back from a plain window
        break;
    default:
        break;
    }
}

LRESULT ToolWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    watchActivation(message, wParam, lParam);
    switch (message) {
    case WM_SIZE:
        layOut();
        break; // MDI children must pass this on
    case WM_SETFOCUS:
        usual(message, wParam, lParam);
        if (panel_) {
            restoreFocus();
        }
        return 0;
    case WM_COMMAND:
        if (startsChecking(wParam) && onCheck) {
            onCheck();
            return 0;
        }
        break;
    case WM_SETCURSOR:
        if (showUnusual(pointer_)) {
            return TRUE;
        }
        break;
    case WM_DPICHANGED:
        resolutionChanged(reinterpret_cast<const RECT*>(lParam));
        return 0;
    case kDpiChangedAfterParent:
        resolutionChanged(nullptr);
        break;
    case WM_CLOSE:
        if (onClose) {
            onClose();
        }
        return 0;
    default:
        break;
    }
    return usual(message, wParam, lParam);
}

ToolWindow* ToolWindow::ofNewWindow(HWND window, const CREATESTRUCTW& creation) {
    const void* given = creation.lpCreateParams;
    if (creation.dwExStyle & WS_EX_MDICHILD) {
        given = reinterpret_cast<const void*>(static_cast<const MDICREATESTRUCTW*>(given)->lParam);
    }
    auto* self = static_cast<ToolWindow*>(const_cast<void*>(given));
    self->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    return self;
}

LRESULT CALLBACK ToolWindow::windowProcedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) noexcept {
    auto* self = message == WM_NCCREATE
                     ? ofNewWindow(window, *reinterpret_cast<const CREATESTRUCTW*>(lParam))
                     : reinterpret_cast<ToolWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) {
        const bool isMdiChild = GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_MDICHILD;
        return isMdiChild ? DefMDIChildProcW(window, message, wParam, lParam)
                          : DefWindowProcW(window, message, wParam, lParam);
    }
    try {
        const std::shared_ptr<ToolWindow> alive = self->shared_from_this();
        return self->handle(message, wParam, lParam);
    } catch (const std::exception&) {
        return 0; // what the handlers call reports its own failures
    }
}

} // namespace workbench
