#include "workbench/window_objects.h"

#include <memory>

#include "workbench/failure.h"
#include "workbench/text.h"

namespace workbench {

namespace {

constexpr int kTwipsPerInch = 1440;

long handleOf(const MainWindow& window) {
    return static_cast<long>(reinterpret_cast<LONG_PTR>(window.handle()));
}

ControlContainer& controlOf(MainWindow& window) {
    if (!window.control()) {
        throw Failure(L"The control is closed");
    }
    return *window.control();
}

/// The control with the members that its container adds to it.
ComPtr<IDispatch> makeExtendedControl(MainWindow& window) {
    auto control = makeObject<ScriptObject>();
    control->property(
        L"Visible", [&](const Arguments&) { return Variant(controlOf(window).visible()); },
        [&](const Arguments& arguments) {
            controlOf(window).show(arguments.boolean(0));
            return Variant();
        });
    control->member(L"ZOrder", [&](const Arguments& arguments) {
        if (arguments.count() == 0 || arguments.integer(0) == 0) {
            controlOf(window).bringToFront();
        }
        return Variant();
    });
    control->member(L"SetFocus", [&](const Arguments&) {
        controlOf(window).focus();
        return Variant();
    });
    control->extend(controlOf(window).control());
    return control;
}

/// `Controls`: by name or index, and `Add`. The window has room for one control, whatever its name.
ComPtr<IDispatch> makeControls(MainWindow& window, const std::shared_ptr<std::wstring>& name) {
    auto controls = makeObject<ScriptObject>();
    controls->member(L"Count", [&](const Arguments&) { return Variant(window.control() ? 1 : 0); });
    controls->member(L"Item", [&window, name](const Arguments& arguments) {
        const Variant key = arguments.value(0);
        const bool found = key.raw().vt == VT_BSTR ? sameName(key.text(), *name) : key.integer() == 1;
        if (!window.control() || !found) {
            throw Failure(L"The window has no such control", DISP_E_BADINDEX);
        }
        return Variant(makeExtendedControl(window));
    });
    controls->member(L"Add", [&window, name](const Arguments& arguments) {
        window.createControl(arguments.text(0).c_str());
        *name = arguments.text(1);
        return Variant(makeExtendedControl(window));
    });
    return controls;
}

Variant moveWindow(MainWindow& window, const Arguments& arguments) {
    const auto pixels = [&](size_t index) {
        return static_cast<int>(arguments.number(index) * GetDpiForWindow(window.handle()) / kTwipsPerInch);
    };
    SetWindowPos(window.handle(), nullptr, pixels(0), pixels(1), pixels(2), pixels(3),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return {};
}

ComPtr<IDispatch> makeToolWindow(MainWindow& window, const std::shared_ptr<std::wstring>& controlName) {
    auto tool = makeObject<ScriptObject>();
    tool->constant(L"hwnd", handleOf(window));
    tool->constant(L"Controls", makeControls(window, controlName));
    tool->member(L"DisplayLog", [&](const Arguments&) {
        window.layOut();
        return Variant();
    });
    tool->member(L"Move", [&](const Arguments& arguments) { return moveWindow(window, arguments); });
    tool->member(L"SetFocus", [&](const Arguments&) {
        SetFocus(window.handle());
        return Variant();
    });
    tool->property(
        L"Enabled", [&](const Arguments&) { return Variant(IsWindowEnabled(window.handle()) != FALSE); },
        [&](const Arguments& arguments) {
            EnableWindow(window.handle(), arguments.boolean(0));
            return Variant();
        });
    tool->property(
        L"MousePointer", [&](const Arguments&) { return Variant(window.pointer()); },
        [&](const Arguments& arguments) {
            window.setPointer(arguments.integer(0));
            return Variant();
        });
    return tool;
}

} // namespace

ComPtr<IDispatch> makeMainWindowObject(MainWindow& window) {
    auto object = makeObject<ScriptObject>();
    object->constant(L"hwnd", handleOf(window));
    object->constant(L"IsMDIForm", true); // only such a window is offered the errors of an entry
    return object;
}

ComPtr<IDispatch> makeToolList(MainWindow& window) {
    auto tool = makeObject<ScriptObject>();
    tool->constant(L"CalvettaWindow", makeToolWindow(window, std::make_shared<std::wstring>(L"LogView")));
    return makeCollection(
        1, [tool](size_t) -> ComPtr<IDispatch> { return tool; },
        [](const std::wstring&) -> size_t { return 0; });
}

} // namespace workbench
