#include "tests/windows/placing_host.h"

#include <cwchar>

namespace cvlog::tests {

namespace {

using Arguments = ScriptedDispatch::Arguments;

HRESULT giveNumber(VARIANT* result, LONG value) {
    result->vt = VT_I4;
    result->lVal = value;
    return S_OK;
}

} // namespace

PlacingHost::PlacingHost(const std::wstring& projectFolder)
    : product_(L"CVLog3 Tests " + std::to_wstring(GetCurrentProcessId())), // tests run beside each other
      handle_(CreateWindowExW(0, L"STATIC", L"tool", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 700, 500,
                              nullptr, nullptr, nullptr, nullptr)),
      options_(com::adopt(OptionsDouble::make())) {
    toldHandle = static_cast<LONG>(reinterpret_cast<LONG_PTR>(handle_));
    makeWindowObject();
    makeWorkspaceObject(projectFolder);
}

PlacingHost::~PlacingHost() {
    logView_.reset();
    if (IsWindow(handle_)) DestroyWindow(handle_);
}

void PlacingHost::makeWindowObject() {
    ScriptedDispatch* window = ScriptedDispatch::make();
    window_ = com::adopt<IDispatch>(window);
    window->object(L"Controls", makeControls())
        .member(L"hwnd", [this](Arguments&, VARIANT* result) { return giveNumber(result, toldHandle); })
        .member(L"DisplayLog", [this](Arguments&, VARIANT*) { return ++layouts, S_OK; })
        .member(L"SetFocus", [this](Arguments&, VARIANT*) { return ++focused, ::SetFocus(handle_), S_OK; })
        .raw(L"Move", [this](DISPPARAMS& parameters) { return move(parameters); });
}

IDispatch* PlacingHost::makeControls() {
    ScriptedDispatch* controls = ScriptedDispatch::make();
    controls->member(L"Item", [this](Arguments& a, VARIANT* result) {
        const bool isLogView = a.at(0).vt == VT_BSTR && std::wcscmp(a[0].bstrVal, L"LogView") == 0;
        if (isLogView && logViewObject_) giveObject(result, logViewObject_.Get());
        return S_OK;
    });
    controls->member(L"Add", [this](Arguments& a, VARIANT* result) {
        added.emplace_back(a.at(1).bstrVal);
        logViewObject_ = com::adopt<IDispatch>(makeLogView(a.at(0).bstrVal));
        giveObject(result, logViewObject_.Get());
        return S_OK;
    });
    return controls;
}

// What a container adds to a control, and the control's own members that are asked for.
IDispatch* PlacingHost::makeLogView(const wchar_t* progId) {
    logView_ = std::make_unique<AxWindow>(progId, WS_CHILD, handle_);
    EXPECT_TRUE(logView_->control());
    ScriptedDispatch* object = ScriptedDispatch::make();
    object->member(L"Visible", [this](Arguments& a, VARIANT*) {
        ShowWindow(logView_->window(), a.at(0).boolVal != VARIANT_FALSE ? SW_SHOWNA : SW_HIDE);
        return S_OK;
    });
    object->member(L"ZOrder", [this](Arguments&, VARIANT*) {
        return BringWindowToTop(logView_->window()) ? S_OK : E_FAIL;
    });
    object->member(L"SetFocus", [this](Arguments&, VARIANT*) { return ::SetFocus(logView_->list()), S_OK; });
    object->member(L"Font", [this](Arguments& a, VARIANT*) {
        Variant font;
        VariantCopy(&font, &a.at(0));
        return callByName(logView_->control().Get(), L"Font", DISPATCH_PROPERTYPUTREF, {font});
    });
    return object;
}

HRESULT PlacingHost::move(DISPPARAMS& parameters) {
    if (parameters.cArgs != 4) return DISP_E_BADPARAMCOUNT;
    Moved moved{};
    for (UINT i = 0; i < 4; ++i) {
        VARIANT& argument = parameters.rgvarg[3 - i];
        moved.types[i] = argument.vt;
        if (argument.vt != (VT_BYREF | VT_R8)) continue;
        moved.values[i] = *argument.pdblVal;
        *argument.pdblVal = -1; // its own to use
    }
    moves.push_back(moved);
    return S_OK;
}

void PlacingHost::makeWorkspaceObject(const std::wstring& projectFolder) {
    auto* tool = ScriptedDispatch::make();
    tool->object(L"CalvettaWindow", (window_.Get()->AddRef(), window_.Get()));
    auto* tools = ScriptedDispatch::make();
    tools->number(L"Count", 1).object(L"Item", tool);
    workspace_ = com::adopt(makeWorkspace(projectFolder));
    workspace_->object(L"Tools", tools);
    workspace_->replace(L"ActiveToolList", [tools](Arguments&, VARIANT* result) {
        giveObject(result, tools);
        return S_OK;
    });
    workspace_->replace(L"UserOptions", [this](Arguments&, VARIANT* result) {
        giveObject(result, options_.Get());
        return S_OK;
    });
    workspace_->replace(L"GetProductInfo", [this](Arguments&, VARIANT* result) {
        giveText(result, product_);
        return S_OK;
    });
}

} // namespace cvlog::tests
