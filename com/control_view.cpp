// The control's picture, for containers that draw it without activating it.

#include "com/control_shell.h"

#include "com/firewall.h"
#include "platform/win32/list_view_window.h"

namespace cvlog::com {

STDMETHODIMP ControlShell::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC draw, LPCRECTL bounds,
                                LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (!bounds) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (!window()) return E_FAIL;
    const int saved = SaveDC(draw);
    IntersectClipRect(draw, bounds->left, bounds->top, bounds->right, bounds->bottom);
    POINT corner{bounds->left, bounds->top};
    LPtoDP(draw, &corner, 1); // the container's origin may be anywhere
    SetWindowOrgEx(draw, 0, 0, nullptr);
    SetViewportOrgEx(draw, corner.x, corner.y, nullptr);
    SendMessageW(window()->list(), WM_PRINT, reinterpret_cast<WPARAM>(draw),
                 PRF_CLIENT | PRF_NONCLIENT | PRF_CHILDREN | PRF_ERASEBKGND);
    RestoreDC(draw, saved);
    return S_OK;
}

STDMETHODIMP ControlShell::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colours) {
    return colours ? (*colours = nullptr, S_FALSE) : E_POINTER;
}

STDMETHODIMP ControlShell::Freeze(DWORD, LONG, void*, DWORD*) { return E_NOTIMPL; }

STDMETHODIMP ControlShell::Unfreeze(DWORD) { return E_NOTIMPL; }

STDMETHODIMP ControlShell::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return firewall([&] {
        const ComPtr<IUnknown> keep(outer());
        const ComPtr<IAdviseSink> before = viewSink_; // it goes when everything here is in order
        viewAspects_ = aspects;
        viewFlags_ = flags;
        viewSink_ = sink;
        if (sink && (flags & ADVF_PRIMEFIRST)) sink->OnViewChange(DVASPECT_CONTENT, -1);
        return S_OK;
    });
}

STDMETHODIMP ControlShell::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects) *aspects = viewAspects_;
    if (flags) *flags = viewFlags_;
    return sink ? viewSink_.CopyTo(sink) : S_OK;
}

STDMETHODIMP ControlShell::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) {
    return GetExtent(aspect, size);
}

} // namespace cvlog::com
