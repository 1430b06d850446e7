#include "workbench/tool_window_object.h"

#include "workbench/failure.h"
#include "workbench/screen_scale.h"
#include "workbench/script_object.h"
#include "workbench/tool_window.h"

namespace workbench {

namespace {

using WeakWindow = std::weak_ptr<ToolWindow>;

std::shared_ptr<ToolWindow> open(const WeakWindow& window) {
    auto found = window.lock();
    if (!found || !found->handle()) {
        throw Failure(L"The window is closed");
    }
    return found;
}

bool isSameObject(IDispatch* left, IDispatch* right) {
    ComPtr<IUnknown> identities[2];
    left->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identities[0].GetAddressOf()));
    right->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identities[1].GetAddressOf()));
    return identities[0].Get() == identities[1].Get();
}

/// Controls.Add(ProgID, Name, Container): the window itself is the only container in it.
Variant addControl(ToolWindow& window, const Arguments& arguments) {
    const ComPtr<IDispatch> container = arguments.count() > 2 ? arguments.value(2).object() : nullptr;
    if (container && !isSameObject(container.Get(), window.object())) {
        throw Failure(L"The container belongs to another window", E_INVALIDARG);
    }
    return window.addControl(arguments.text(0), arguments.text(1)).object();
}

/// The control of a name, or nothing; the control at a 1-based index.
Variant findControl(const ToolWindow& window, const Variant& key) {
    if (key.raw().vt == VT_BSTR) {
        const ControlContainer* control = window.findControl(key.text());
        return control ? Variant(control->object()) : Variant();
    }
    const long index = key.integer();
    if (index < 1 || static_cast<size_t>(index) > window.controls().size()) {
        throw Failure(L"There is no control " + std::to_wstring(index), DISP_E_BADINDEX);
    }
    return window.controls()[static_cast<size_t>(index) - 1]->object();
}

ComPtr<IDispatch> makeControls(const WeakWindow& window) {
    auto controls = makeObject<ScriptObject>();
    controls->member(L"Count", [=](const Arguments&) {
        return Variant(static_cast<long>(open(window)->controls().size()));
    });
    controls->member(
        L"Item", [=](const Arguments& arguments) { return findControl(*open(window), arguments.value(0)); });
    controls->member(L"Add",
                     [=](const Arguments& arguments) { return addControl(*open(window), arguments); });
    return controls;
}

void moveWindow(HWND window, const Arguments& arguments) {
    SetWindowPos(window, nullptr, toPixels(window, arguments.number(0)),
                 toPixels(window, arguments.number(1)), toPixels(window, arguments.number(2)),
                 toPixels(window, arguments.number(3)), SWP_NOZORDER | SWP_NOACTIVATE);
}

/// The handle of a window that is no more.
long deadHandle() {
    const HWND window = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    DestroyWindow(window);
    return static_cast<long>(reinterpret_cast<LONG_PTR>(window));
}

void addHandle(ScriptObject& object, const WeakWindow& window, ToolKind kind) {
    if (kind == ToolKind::kDeadHandle) {
        object.constant(L"hwnd", deadHandle());
    } else if (kind != ToolKind::kNoHandle) {
        object.member(L"hwnd", [=](const Arguments&) {
            return Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(open(window)->handle())));
        });
    }
}

void addPlacement(ScriptObject& object, const WeakWindow& window) {
    object.constant(L"ScaleTop", 0.0);
    object.member(L"DisplayLog", [=](const Arguments&) {
        open(window)->layOut();
        return Variant();
    });
    object.member(L"Move", [=](const Arguments& arguments) {
        moveWindow(open(window)->handle(), arguments);
        return Variant();
    });
    object.member(L"SetFocus", [=](const Arguments&) {
        open(window)->activate();
        return Variant();
    });
}

void addState(ScriptObject& object, const WeakWindow& window) {
    object.property(
        L"Enabled",
        [=](const Arguments&) { return Variant(IsWindowEnabled(open(window)->handle()) != FALSE); },
        [=](const Arguments& arguments) {
            EnableWindow(open(window)->handle(), arguments.boolean(0));
            return Variant();
        });
    object.property(
        L"MousePointer", [=](const Arguments&) { return Variant(open(window)->pointer()); },
        [=](const Arguments& arguments) {
            open(window)->setPointer(arguments.integer(0));
            return Variant();
        });
}

} // namespace

ComPtr<IDispatch> makeToolWindowObject(const std::shared_ptr<ToolWindow>& window) {
    auto object = makeObject<ScriptObject>();
    object->constant(L"Controls", makeControls(window));
    addHandle(*object.Get(), window, window->kind());
    addPlacement(*object.Get(), window);
    addState(*object.Get(), window);
    return object;
}

} // namespace workbench
