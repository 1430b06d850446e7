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

// Apartments come and go on threads of their own.
SRWLOCK classLock = SRWLOCK_INIT;
int classHolders = 0;

class ClassLock {
public:
    ClassLock() noexcept { AcquireSRWLockExclusive(&classLock); }
    ~ClassLock() { ReleaseSRWLockExclusive(&classLock); }
    ClassLock(const ClassLock&) = delete;
    ClassLock& operator=(const ClassLock&) = delete;
};

void registerClass() {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = ownWindowProcedure;
    description.hInstance = thisModule();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kClassName;
    if (!RegisterClassExW(&description)) throw std::runtime_error("no window class");
}

} // namespace

OwnWindowClass::OwnWindowClass() {
    const ClassLock lock;
    if (classHolders == 0) registerClass();
    ++classHolders;
}

OwnWindowClass::~OwnWindowClass() {
    const ClassLock lock;
    if (--classHolders == 0) UnregisterClassW(kClassName, thisModule());
}

HWND makeOwnWindow(MessageHandler& handler, DWORD style, DWORD extendedStyle, HWND parent,
                   bool placedBySystem) {
    const int place = placedBySystem ? CW_USEDEFAULT : 0;
    const HWND window = CreateWindowExW(extendedStyle, kClassName, L"", style, place, place, place, place,
                                        parent, nullptr, thisModule(), &handler);
    if (!window) throw std::runtime_error("no window");
    return window;
}

} // namespace cvlog::platform::win32
