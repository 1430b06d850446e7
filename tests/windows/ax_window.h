#pragma once

#include "tests/windows/com_test.h"

namespace cvlog::tests {

/// A window of the system's own ActiveX container with a new control in it.
class AxWindow {
public:
    AxWindow(const wchar_t* progId, DWORD style, HWND parent) {
        // A second initialisation in one process fails.
        static const BOOL initialised = entry<BOOL(WINAPI*)()>("AtlAxWinInit")();
        if (!initialised) return;
        window_ = CreateWindowExW(0, L"AtlAxWin100", progId, style, 0, 0, 640, 320, parent, nullptr, nullptr,
                                  nullptr);
        ComPtr<IUnknown> unknown;
        if (window_ &&
            entry<HRESULT(WINAPI*)(HWND, IUnknown**)>("AtlAxGetControl")(window_, &unknown) == S_OK)
            unknown.As(&control_);
    }
    ~AxWindow() {
        control_.Reset();
        if (IsWindow(window_)) DestroyWindow(window_);
    }
    AxWindow(const AxWindow&) = delete;
    AxWindow& operator=(const AxWindow&) = delete;

    HWND window() const noexcept { return window_; }
    /// None when it could not be made.
    const ComPtr<IDispatch>& control() const noexcept { return control_; }
    void releaseControl() { control_.Reset(); }
    HWND list() const {
        Variant handle;
        EXPECT_EQ(callByName(control_.Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &handle), S_OK);
        return reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.lVal));
    }

private:
    template <class Function>
    static Function entry(const char* name) {
        static const HMODULE library = LoadLibraryW(L"atl100.dll");
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    }

    HWND window_ = nullptr;
    ComPtr<IDispatch> control_;
};

} // namespace cvlog::tests
