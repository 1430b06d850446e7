#include "platform/win32/own_window.h"

#include "platform/win32/firewall.h"
#include "platform/win32/module.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr wchar_t kClassName[] = L"CVLogWindow";

LRESULT CALLBACK ownWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto& creation = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation.lpCreateParams));
    }
    auto* handler = reinterpret_cast<MessageHandler*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!handler) return DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        handler->windowGone();
        return DefWindowProcW(window, message, wParam, lParam);
    }
    return firewall(LRESULT{0}, [&] { return handler->handleMessage(window, message, wParam, lParam); });
}

void registerClass() noexcept {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = ownWindowProcedure;
    description.hInstance = thisModule();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kClassName;
    RegisterClassExW(&description); // fails harmlessly when it is registered
}

} // namespace

HWND makeOwnWindow(MessageHandler& handler, DWORD style, DWORD extendedStyle, HWND parent) {
    // Another apartment may give the class back between the two calls, hence the second try.
    for (int attempt = 0; attempt < 2; ++attempt) {
        registerClass();
        const HWND window = CreateWindowExW(extendedStyle, kClassName, L"", style, 0, 0, 0, 0, parent,
                                            nullptr, thisModule(), &handler);
        if (window) return window;
    }
    throw std::runtime_error("no window");
}

void releaseOwnWindowClass() noexcept { UnregisterClassW(kClassName, thisModule()); }

} // namespace cvlog::platform::win32
