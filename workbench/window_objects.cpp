#include "workbench/window_objects.h"

namespace workbench {

ComPtr<IDispatch> makeMainWindowObject(const FrameWindow& frame) {
    auto object = makeObject<ScriptObject>();
    object->constant(L"hwnd", static_cast<long>(reinterpret_cast<LONG_PTR>(frame.handle())));
    object->constant(L"IsMDIForm", true); // only such a window is offered the errors of an entry
    return object;
}

ComPtr<IDispatch> makeToolList(const ToolWindows& tools) {
    auto list = makeObject<ScriptObject>();
    list->member(L"Count", [&](const Arguments&) { return Variant(static_cast<long>(tools.count())); });
    list->member(L"Item", [&](const Arguments& arguments) -> Variant {
        auto tool = makeObject<ScriptObject>();
        tool->constant(L"CalvettaWindow", tools.at(arguments.integer(0)).object());
        return tool;
    });
    return list;
}

} // namespace workbench
