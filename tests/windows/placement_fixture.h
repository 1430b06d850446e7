#pragma once

#include "tests/windows/counting_sink.h"
#include "tests/windows/form_window_fixture.h"
#include "tests/windows/from_the_loop.h"
#include "tests/windows/invoke_call.h"
#include "tests/windows/loaded_library.h"
#include "tests/windows/placing_host.h"

#include <commctrl.h>
#include <ocidl.h>

#include <optional>

namespace cvlog::tests {

using platform::win32::HostsWindow;
using platform::win32::takeMessages;
using platform::win32::takeMessagesUntil;

/// An open log of a host that has one window, driven through IDispatch.
class PlacementTest : public ComTest {
protected:
    static constexpr DISPID kGotFocus = 2;
    static constexpr DISPID kLostFocus = 3;

    void SetUp() override;
    void TearDown() override;

    void open();
    void put(const wchar_t* property, bool value);
    bool is(const wchar_t* property);
    void putParent(IDispatch* parent, WORD flags = DISPATCH_PROPERTYPUTREF);
    void call(const wchar_t* method, std::initializer_list<Variant> arguments = {});
    void add();
    static Variant objectArgument(IDispatch* object);
    /// The floating window; null when there is none on the screen.
    HWND floating() const { return windowTitled(host_->product() + L" Activity Log"); }
    /// A window of this thread that can be seen.
    static HWND windowTitled(const std::wstring& title);
    static HWND listIn(HWND window);
    static LRESULT rowsOf(HWND list) { return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0); }
    void docks();
    void floats();
    /// The log and all that the test holds of it go.
    void releaseLog();

    std::wstring settingsPath() const {
        return L"Software\\VB and VBA Program Settings\\" + host_->product();
    }
    /// What is stored of the log; "none" for nothing.
    std::wstring stored(const wchar_t* key) const;

    ProjectFolder project_;
    std::optional<LoadedLibrary> library_;
    std::optional<PlacingHost> host_;
    ComPtr<IDispatch> log_;
    ComPtr<IConnectionPoint> point_;
    CountingSink sink_;
    int hostObjectsBefore_ = 0;
};

} // namespace cvlog::tests
