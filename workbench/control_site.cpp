#include "workbench/control_site.h"

#include "workbench/ambient_properties.h"
#include "workbench/failure.h"

namespace workbench {

namespace {

HRESULT answerWindow(HWND answer, HWND* window) {
    if (!window) {
        return E_POINTER;
    }
    *window = answer;
    return answer ? S_OK : E_FAIL;
}

} // namespace

void* ControlFrame::findInterface(REFIID iid) {
    const bool isBase = iid == IID_IOleInPlaceUIWindow || iid == IID_IOleWindow;
    return isBase ? static_cast<IOleInPlaceFrame*>(this) : ComObject::findInterface(iid);
}

HRESULT ControlFrame::GetWindow(HWND* window) { return answerWindow(window_, window); }

HRESULT ControlFrame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    active_ = object;
    return S_OK;
}

void* ControlSite::findInterface(REFIID iid) {
    return iid == IID_IOleWindow ? static_cast<IOleInPlaceSite*>(this) : ComObject::findInterface(iid);
}

HRESULT ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker) {
        *moniker = nullptr;
    }
    return E_NOTIMPL;
}

HRESULT ControlSite::GetContainer(IOleContainer** container) {
    if (container) {
        *container = nullptr;
    }
    return E_NOINTERFACE;
}

HRESULT ControlSite::GetWindow(HWND* window) { return answerWindow(window_, window); }

HRESULT ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                      LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
    if (!frame || !document || !position || !clip || !info) {
        return E_POINTER;
    }
    *document = nullptr; // the frame is the only window around the control
    *position = area_;
    *clip = area_;
    info->fMDIApp = FALSE;
    info->hwndFrame = window_;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return frame_.CopyTo(frame);
}

HRESULT ControlSite::OnInPlaceDeactivate() {
    inPlace_.Reset();
    return S_OK;
}

HRESULT ControlSite::OnPosRectChange(LPCRECT) {
    // The window decides: the control fills the place it was given.
    return inPlace_ ? inPlace_->SetObjectRects(&area_, &area_) : S_OK;
}

HRESULT ControlSite::GetExtendedControl(IDispatch** control) {
    if (!control) {
        return E_POINTER;
    }
    *control = nullptr;
    return extended_ ? extended_.CopyTo(control) : E_NOTIMPL;
}

HRESULT ControlSite::GetTypeInfoCount(UINT* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

HRESULT ControlSite::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                            UINT*) {
    if (!(flags & DISPATCH_PROPERTYGET)) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (!result) {
        return E_POINTER;
    }
    try {
        Variant value;
        const HRESULT code = ambientProperty(id, value);
        *result = value.detach();
        return code;
    } catch (const Failure& failure) {
        return failure.code();
    } catch (const std::exception&) {
        return E_OUTOFMEMORY;
    }
}

} // namespace workbench
