// How the control becomes active in its container: in place, with its window inside the container's, and then with
// the user interface, when it takes the focus.

#include "com/control_shell.h"

#include "com/control_keys.h"
#include "com/firewall.h"
#include "platform/win32/list_view_window.h"

#include <olectl.h>

#include <utility>

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
    if (FAILED(result = site->GetWindow(&parent))) return result;
    if (FAILED(result = site->GetWindowContext(&frame_, &document_, &position, &clip, &info))) return result;
    result = site->OnInPlaceActivate();
    if (FAILED(result) || site_.Get() != clientSite.Get()) {
        frame_.Reset();
        document_.Reset();
        return FAILED(result) ? result : E_FAIL;
    }
    inPlaceSite_ = site;
    inPlaceActive_ = true;
    picture_.setActive(true);
    placeWindow(parent, position, clip);
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
    const ComPtr<IOleInPlaceUIWindow> around[] = {frame_, document_};
    for (const auto& each : around) {
        if (!each || !userInterfaceActive_) continue;
        each->SetActiveObject(static_cast<IOleInPlaceActiveObject*>(this), nullptr);
        each->SetBorderSpace(nullptr); // the list has no tools: the container's stay
    }
    return userInterfaceActive_ ? S_OK : E_FAIL;
}

// A part of the window that the container covers or has scrolled away is cut off; an empty clip says nothing.
void ControlShell::placeWindow(HWND parent, const RECT& position, const RECT& clip) {
    if (!window()) return;
    window()->moveTo(parent, position);
    RECT seen = position;
    if (!IsRectEmpty(&clip)) IntersectRect(&seen, &position, &clip);
    const bool isCut = !EqualRect(&seen, &position) && !IsRectEmpty(&position);
    if (!window() || (!isCut && !clipped_)) return;
    clipped_ = isCut;
    OffsetRect(&seen, -position.left, -position.top);
    const HRGN region = isCut ? CreateRectRgnIndirect(&seen) : nullptr;
    if (!SetWindowRgn(window()->frame(), region, TRUE) && region) DeleteObject(region);
}

void ControlShell::mousePressed() {
    const ComPtr<IUnknown> keep(outer());
    if (inPlaceActive_) activateUserInterface();
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

// What the container says of its surroundings here it says as ambient properties too, which are read with its site.
STDMETHODIMP ControlShell::QuickActivate(QACONTAINER* container, QACONTROL* told) {
    return firewall([&]() -> HRESULT {
        if (!container || !told) return E_POINTER;
        const ComPtr<IUnknown> keep(outer());
        *told = {};
        told->cbSize = sizeof *told;
        HRESULT result = SetClientSite(container->pClientSite);
        if (SUCCEEDED(result) && container->pAdviseSink)
            result = SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
        if (SUCCEEDED(result) && container->pPropertyNotifySink)
            result = notifications_.Advise(container->pPropertyNotifySink, &told->dwPropNotifyCookie);
        GetMiscStatus(DVASPECT_CONTENT, &told->dwMiscStatus);
        GetViewStatus(&told->dwViewStatus);
        return result;
    });
}

STDMETHODIMP ControlShell::SetContentExtent(LPSIZEL size) { return SetExtent(DVASPECT_CONTENT, size); }

STDMETHODIMP ControlShell::GetContentExtent(LPSIZEL size) { return GetExtent(DVASPECT_CONTENT, size); }

STDMETHODIMP ControlShell::InPlaceDeactivate() {
    return firewall([&] {
        if (!inPlaceActive_) return S_OK;
        const ComPtr<IUnknown> keep(outer());
        UIDeactivate();
        giveFocusBack();
        if (!inPlaceActive_) return S_OK; // who was told did it
        inPlaceActive_ = false;
        picture_.setActive(false);
        if (window()) {
            if (std::exchange(clipped_, false)) SetWindowRgn(window()->frame(), nullptr, FALSE);
            window()->park();
        }
        frame_.Reset();
        document_.Reset();
        const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
        inPlaceSite_.Reset();
        if (site) site->OnInPlaceDeactivate();
        return S_OK;
    });
}

void ControlShell::giveFocusBack() {
    const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
    HWND container = nullptr;
    if (window() && window()->list() && GetFocus() == window()->list() && site &&
        SUCCEEDED(site->GetWindow(&container)))
        SetFocus(container);
}

STDMETHODIMP ControlShell::UIDeactivate() {
    return firewall([&] {
        if (!userInterfaceActive_) return S_OK;
        const ComPtr<IUnknown> keep(outer());
        userInterfaceActive_ = false;
        const ComPtr<IOleInPlaceUIWindow> around[] = {frame_, document_};
        for (const auto& each : around)
            if (each) each->SetActiveObject(nullptr, nullptr);
        const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
        if (site) site->OnUIDeactivate(FALSE);
        return S_OK;
    });
}

STDMETHODIMP ControlShell::SetObjectRects(LPCRECT position, LPCRECT clip) {
    return firewall([&]() -> HRESULT {
        if (!position) return E_POINTER;
        const ComPtr<IUnknown> keep(outer());
        HWND parent = nullptr;
        if (inPlaceActive_ && inPlaceSite_ && SUCCEEDED(inPlaceSite_->GetWindow(&parent)))
            placeWindow(parent, *position, clip ? *clip : RECT{});
        return S_OK;
    });
}

STDMETHODIMP ControlShell::ReactivateAndUndo() { return INPLACE_E_NOTUNDOABLE; }

STDMETHODIMP ControlShell::TranslateAccelerator(LPMSG message) {
    return firewall([&]() -> HRESULT {
        if (!message) return E_POINTER;
        const ComPtr<IUnknown> keep(outer());
        const DWORD modifiers = keyModifiers();
        const bool isList = window() && message->hwnd == window()->list();
        if (isList && isKeyOfList(*message, modifiers)) {
            if (typesText(message->wParam)) TranslateMessage(message);
            DispatchMessageW(message);
            return S_OK;
        }
        ComPtr<IOleControlSite> controlSite;
        const bool isOffered = site_ && SUCCEEDED(site_.As(&controlSite));
        return isOffered ? controlSite->TranslateAccelerator(message, modifiers) : S_FALSE;
    });
}

STDMETHODIMP ControlShell::OnFrameWindowActivate(BOOL) { return S_OK; }

STDMETHODIMP ControlShell::OnDocWindowActivate(BOOL) { return S_OK; }

STDMETHODIMP ControlShell::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) { return S_OK; }

STDMETHODIMP ControlShell::EnableModeless(BOOL) { return S_OK; }

} // namespace cvlog::com
