#pragma once

#include "platform/win32/form_window.h"
#include "platform/win32/screen_units.h"
#include "tests/support/form_contract.h"
#include "tests/windows/list_view_peer_fixture.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cvlog::platform::win32 {

/// Takes messages until something is so; false when it is not after a time that is ample on any machine.
inline bool takeMessagesUntil(const std::function<bool()>& something) {
    constexpr ULONGLONG kAmple = 30'000;
    const ULONGLONG end = GetTickCount64() + kAmple;
    for (takeMessages(); !something(); takeMessages()) {
        if (GetTickCount64() > end) return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    }
    return true;
}

inline std::int32_t handleOf(HWND window) {
    return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(window));
}

/// A window of a host.
class HostsWindow {
public:
    explicit HostsWindow(DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE, HWND parent = nullptr)
        : window_(CreateWindowExW(0, L"STATIC", L"host", style, 200, 150, 500, 400, parent, nullptr, nullptr,
                                  nullptr)) {}
    ~HostsWindow() { DestroyWindow(window_); }
    HostsWindow(const HostsWindow&) = delete;
    HostsWindow& operator=(const HostsWindow&) = delete;
    operator HWND() const noexcept { return window_; }
    std::int32_t handle() const noexcept { return handleOf(window_); }

private:
    HWND window_;
};

/// Forms in real windows, and a list (`model_`) to put on them.
class FormWindowFixture : public ListViewPeerFixture {
protected:
    using RecordingForm = widgets::testbed::RecordingForm;
    using Border = widgets::Border;

    std::shared_ptr<RecordingForm> make(Border border = Border::Sizable) {
        return RecordingForm::make(services_.peers, border);
    }
    static HWND windowOf(const RecordingForm& recording) {
        return static_cast<FormWindow*>(recording.form.peer())->window();
    }
    static int dpiOf(const RecordingForm& recording) { return windowDpi(windowOf(recording)); }
    static RECT placeOf(HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }
    static SIZE clientOf(HWND window) {
        RECT client{};
        GetClientRect(window, &client);
        return {client.right, client.bottom};
    }
    /// The windows of one class on a form, in their order.
    static std::vector<HWND> childrenOf(HWND window, const wchar_t* windowClass) {
        std::vector<HWND> found;
        for (HWND next = nullptr; (next = FindWindowExW(window, next, windowClass, nullptr));)
            found.push_back(next);
        return found;
    }

    /// Puts two buttons, "&One" and "&Two", on a form; what is pressed is noted.
    void addButtons(RecordingForm& recording) {
        recording.form.add(
            {{0, 0, 900, 360}, u"&One", true, false, [this] { pressed_.emplace_back("one"); }});
        recording.form.add(
            {{0, 600, 900, 360}, u"&Two", false, true, [this] { pressed_.emplace_back("two"); }});
    }
    static void post(HWND target, UINT message, WPARAM key) {
        PostMessageW(target, message, key, 1);
        takeMessages();
    }

    std::vector<std::string> pressed_;
};

} // namespace cvlog::platform::win32
