// The control's picture, for containers that draw it without activating it.

#include "com/control_shell.h"

#include "base/failure.h"
#include "com/firewall.h"

namespace cvlog::com {

void ControlShell::viewChanged() {
    if (viewAdvice_.isWanted() || data_.isWanted()) base::ignoring([this] { viewTimer_.enable(); });
}

void ControlShell::tellViewChanged() {
    const ComPtr<IUnknown> keep(outer());
    viewTimer_.disable();
    viewAdvice_.tell();
    data_.tell();
}

STDMETHODIMP ControlShell::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE* device, HDC target, HDC draw,
                                LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE* proceed)(ULONG_PTR),
                                ULONG_PTR proceedArgument) {
    return firewall([&]() -> HRESULT {
        if (!bounds) return E_POINTER;
        if (!draw) return E_INVALIDARG;
        if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        const ComPtr<IUnknown> keep(outer());
        if (proceed && !proceed(proceedArgument)) return E_ABORT;
        const RECT place = {bounds->left, bounds->top, bounds->right, bounds->bottom};
        picture_.draw(draw, place, device ? target : nullptr);
        return S_OK;
    });
}

STDMETHODIMP ControlShell::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colours) {
    return colours ? (*colours = nullptr, S_FALSE) : E_POINTER;
}

STDMETHODIMP ControlShell::Freeze(DWORD, LONG, void*, DWORD*) { return E_NOTIMPL; }

STDMETHODIMP ControlShell::Unfreeze(DWORD) { return E_NOTIMPL; }

STDMETHODIMP ControlShell::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return firewall([&] {
        const ComPtr<IUnknown> keep(outer());
        return viewAdvice_.set(aspects, flags, sink);
    });
}

STDMETHODIMP ControlShell::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    return viewAdvice_.get(aspects, flags, sink);
}

STDMETHODIMP ControlShell::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) {
    return GetExtent(aspect, size);
}

STDMETHODIMP ControlShell::GetRect(DWORD aspect, LPRECTL area) {
    if (!area) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *area = {0, 0, picture_.extent().cx, picture_.extent().cy};
    return S_OK;
}

STDMETHODIMP ControlShell::GetViewStatus(DWORD* status) {
    return status ? (*status = VIEWSTATUS_OPAQUE, S_OK) : E_POINTER;
}

STDMETHODIMP ControlShell::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT place, LONG, DWORD* result) {
    if (!bounds || !result) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *result = PtInRect(bounds, place) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

STDMETHODIMP ControlShell::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT place, LONG, DWORD* result) {
    if (!bounds || !place || !result) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    RECT common{};
    *result = IntersectRect(&common, bounds, place) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

// Every size suits a list.
STDMETHODIMP ControlShell::GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) {
    return E_NOTIMPL;
}

} // namespace cvlog::com
