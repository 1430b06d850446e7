#include "platform/win32/common_controls_context.h"

#include "platform/win32/module.h"

namespace cvlog::platform::win32 {

namespace {

constexpr WORD kManifestResource = 2;

} // namespace

CommonControlsContext::CommonControlsContext() noexcept : context_(INVALID_HANDLE_VALUE) {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(thisModule(), path, MAX_PATH);
    ACTCTXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.lpSource = path;
    wanted.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
    wanted.hModule = thisModule();
    context_ = CreateActCtxW(&wanted);
    active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_);
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
}

CommonControlsContext::~CommonControlsContext() {
    if (active_) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

} // namespace cvlog::platform::win32
