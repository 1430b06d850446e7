// How the control becomes active in its container: in place, with its window inside the container's, and then with
// the user interface, when it takes the focus.

#include "com/control_shell.h"

#include "com/firewall.h"
#include "platform/win32/list_view_window.h"

#include <olectl.h>

namespace cvlog::com {

HRESULT ControlShell::activate(bool userInterface) {
    HRESULT result = inPlaceActive_ ? S_OK : activateInPlace();
    if (SUCCEEDED(result) && userInterface) {
        result = activateUserInterface();
        if (inPlaceActive_) control().lvLog().takeFocus();
    }
    return result;
}

// A container runs whatever it likes while it is told, up to taking its site back.
HRESULT ControlShell::activateInPlace() {
    const ComPtr<IOleClientSite> clientSite = site_;
    if (!clientSite || !window()) return E_UNEXPECTED;
    ComPtr<IOleInPlaceSite> site;
    HRESULT result = clientSite.As(&site);
    if (FAILED(result)) return result;
    if (site->CanInPlaceActivate() != S_OK) return E_FAIL;
    HWND parent = nullptr;
    RECT position = {};
    RECT clip = {};
    OLEINPLACEFRAMEINFO info = {};
    info.cb = sizeof info;
    ComPtr<IOleInPlaceUIWindow> document;
    if (FAILED(result = site->GetWindow(&parent))) return result;
    if (FAILED(result = site->GetWindowContext(&frame_, &document, &position, &clip, &info))) return result;
    if (FAILED(result = site->OnInPlaceActivate())) return result;
    if (site_.Get() != clientSite.Get()) {
        frame_.Reset();
        return E_FAIL;
    }
    inPlaceSite_ = site;
    inPlaceActive_ = true;
    picture_.setActive(true);
    if (window()) window()->moveTo(parent, position);
    if (inPlaceActive_) clientSite->ShowObject();
    return inPlaceActive_ ? S_OK : E_FAIL;
}

HRESULT ControlShell::activateUserInterface() {
    if (userInterfaceActive_ || !inPlaceSite_) return S_OK;
    const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
    const HRESULT result = site->OnUIActivate();
    if (FAILED(result)) return result;
    if (!inPlaceActive_) return E_FAIL;
    userInterfaceActive_ = true;
    const ComPtr<IOleInPlaceFrame> frame = frame_;
    if (frame) frame->SetActiveObject(static_cast<IOleInPlaceActiveObject*>(this), nullptr);
    return S_OK;
}

void ControlShell::focusChanged(bool got) {
    const ComPtr<IUnknown> keep(outer());
    if (!inPlaceActive_) return;
    if (got) activateUserInterface();
    ComPtr<IOleControlSite> controlSite;
    if (site_ && SUCCEEDED(site_.As(&controlSite))) controlSite->OnFocus(got ? TRUE : FALSE);
}

STDMETHODIMP ControlShell::GetWindow(HWND* handle) {
    if (!handle) return E_POINTER;
    *handle = window() ? window()->frame() : nullptr;
    return *handle ? S_OK : E_FAIL;
}

STDMETHODIMP ControlShell::ContextSensitiveHelp(BOOL) { return S_OK; }

STDMETHODIMP ControlShell::InPlaceDeactivate() {
    return firewall([&] {
        if (!inPlaceActive_) return S_OK;
        const ComPtr<IUnknown> keep(outer());
        UIDeactivate();
        inPlaceActive_ = false;
        picture_.setActive(false);
        if (window()) window()->park();
        frame_.Reset();
        const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
        inPlaceSite_.Reset();
        if (site) site->OnInPlaceDeactivate();
        return S_OK;
    });
}

STDMETHODIMP ControlShell::UIDeactivate() {
    return firewall([&] {
        if (!userInterfaceActive_) return S_OK;
        const ComPtr<IUnknown> keep(outer());
        userInterfaceActive_ = false;
        const ComPtr<IOleInPlaceFrame> frame = frame_;
        if (frame) frame->SetActiveObject(nullptr, nullptr);
        const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
        if (site) site->OnUIDeactivate(FALSE);
        return S_OK;
    });
}

STDMETHODIMP ControlShell::SetObjectRects(LPCRECT position, LPCRECT) {
    return firewall([&]() -> HRESULT {
        if (!position) return E_POINTER;
        HWND parent = nullptr;
        if (inPlaceActive_ && window() && inPlaceSite_ && SUCCEEDED(inPlaceSite_->GetWindow(&parent)))
            window()->moveTo(parent, *position);
        return S_OK;
    });
}

STDMETHODIMP ControlShell::ReactivateAndUndo() { return INPLACE_E_NOTUNDOABLE; }

STDMETHODIMP ControlShell::TranslateAccelerator(LPMSG message) {
    return firewall([&]() -> HRESULT {
        if (!message) return E_POINTER;
        const bool isList = window() && message->hwnd == window()->list();
        const WPARAM key = message->wParam;
        // The list's own keys: a container that treats them as dialog keys would move the focus away.
        const bool isListKey = (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_RETURN;
        if (isList && message->message == WM_KEYDOWN && isListKey) {
            SendMessageW(message->hwnd, message->message, message->wParam, message->lParam);
            return S_OK;
        }
        ComPtr<IOleControlSite> controlSite;
        if (site_ && SUCCEEDED(site_.As(&controlSite))) return controlSite->TranslateAccelerator(message, 0);
        return S_FALSE;
    });
}

STDMETHODIMP ControlShell::OnFrameWindowActivate(BOOL) { return S_OK; }

STDMETHODIMP ControlShell::OnDocWindowActivate(BOOL) { return S_OK; }

STDMETHODIMP ControlShell::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) { return S_OK; }

STDMETHODIMP ControlShell::EnableModeless(BOOL) { return S_OK; }

} // namespace cvlog::com
