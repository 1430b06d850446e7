#include "com/control_shell.h"

#include "com/event_point.h"
#include "com/firewall.h"
#include "com/guids.h"
#include "com/misc_status.h"
#include "com/type_library.h"
#include "platform/win32/list_view_window.h"

#include <olectl.h>

namespace cvlog::com {

namespace {

constexpr int kViewDelay = 1; // milliseconds

} // namespace

ControlShell::ControlShell(IUnknown* outer, std::shared_ptr<Apartment> apartment)
    : DispatchShell(outer, apartment, std::make_shared<view::LogControl>(apartment->globals())),
      notifications_(*this, *this), persistence_(*this, control(), apartment->globals().platform.fonts),
      picture_(control(), apartment->globals().platform.peers), data_(*this, picture_),
      viewTimer_(apartment->globals().platform.peers, kViewDelay, [this] { tellViewChanged(); }) {
    control().focusChanged = [this](bool got) { focusChanged(got); };
    control().mayChange = [this](std::int32_t property) { return mayChange(property); };
    control().propertyChanged = [this](std::int32_t property) { propertyChanged(property); };
    window()->viewChanged = [this] { viewChanged(); };
    window()->mousePressed = [this] { mousePressed(); };
}

ControlShell::~ControlShell() {
    control().focusChanged = nullptr;
    control().mayChange = nullptr;
    control().propertyChanged = nullptr;
    if (window()) window()->viewChanged = window()->mousePressed = nullptr;
}

void* ControlShell::interfaceOf(REFIID id) noexcept {
    if (id == IID_IOleObject) return static_cast<IOleObject*>(this);
    if (id == IID_IOleInPlaceObject || id == IID_IOleWindow) return static_cast<IOleInPlaceObject*>(this);
    if (id == IID_IOleInPlaceActiveObject) return static_cast<IOleInPlaceActiveObject*>(this);
    if (id == IID_IOleControl) return static_cast<IOleControl*>(this);
    if (id == IID_IViewObject || id == IID_IViewObject2 || id == IID_IViewObjectEx)
        return static_cast<IViewObjectEx*>(this);
    if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2)
        return static_cast<IProvideClassInfo2*>(this);
    if (id == IID_ISpecifyPropertyPages) return static_cast<ISpecifyPropertyPages*>(this);
    if (id == IID_IPerPropertyBrowsing) return static_cast<IPerPropertyBrowsing*>(this);
    if (id == IID_IDataObject) return static_cast<IDataObject*>(&data_);
    if (id == IID_IQuickActivate) return static_cast<IQuickActivate*>(this);
    if (id == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(this);
    if (void* persistence = persistence_.interfaceOf(id)) return persistence;
    return DispatchShell::interfaceOf(id);
}

const IID* ControlShell::dispatchInterface() const noexcept { return &kControlInterface; }

platform::win32::ListViewWindow* ControlShell::window() const noexcept {
    return static_cast<platform::win32::ListViewWindow*>(control().lvLog().peer());
}

bool ControlShell::mayChange(DISPID property) {
    const ComPtr<IUnknown> keep(outer());
    return notifications_.mayChange(property);
}

void ControlShell::propertyChanged(DISPID property) {
    const ComPtr<IUnknown> keep(outer());
    notifications_.changed(property);
}

STDMETHODIMP ControlShell::SetClientSite(IOleClientSite* site) {
    return firewall([&] {
        const ComPtr<IUnknown> keep(outer());
        if (!site) InPlaceDeactivate();
        site_ = site;
        if (site_) readAmbients(DISPID_UNKNOWN);
        return S_OK;
    });
}

STDMETHODIMP ControlShell::GetClientSite(IOleClientSite** site) {
    return site ? site_.CopyTo(site) : E_POINTER;
}

STDMETHODIMP ControlShell::SetHostNames(LPCOLESTR, LPCOLESTR) { return S_OK; }

// The document that holds the control asks its user, if anybody: the control saves without a question.
STDMETHODIMP ControlShell::Close(DWORD saveOption) {
    return firewall([&] {
        const ComPtr<IUnknown> keep(outer());
        InPlaceDeactivate();
        const ComPtr<IOleClientSite> site = site_;
        if (saveOption != OLECLOSE_NOSAVE && control().unsaved() && site && SUCCEEDED(site->SaveObject()) &&
            advises_)
            advises_->SendOnSave();
        if (advises_) advises_->SendOnClose();
        return S_OK;
    });
}

STDMETHODIMP ControlShell::SetMoniker(DWORD, IMoniker*) { return E_NOTIMPL; }

STDMETHODIMP ControlShell::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    return moniker ? (*moniker = nullptr, E_NOTIMPL) : E_POINTER;
}

STDMETHODIMP ControlShell::InitFromData(IDataObject*, BOOL, DWORD) { return E_NOTIMPL; }

STDMETHODIMP ControlShell::GetClipboardData(DWORD, IDataObject** data) {
    return data ? (*data = nullptr, E_NOTIMPL) : E_POINTER;
}

STDMETHODIMP ControlShell::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent, LPCRECT) {
    return firewall([&]() -> HRESULT {
        const ComPtr<IUnknown> keep(outer());
        switch (verb) {
        case OLEIVERB_INPLACEACTIVATE:
        case OLEIVERB_SHOW:
            return activate(false);
        case OLEIVERB_PRIMARY:
        case OLEIVERB_UIACTIVATE:
            return activate(true);
        case OLEIVERB_HIDE:
            UIDeactivate();
            return InPlaceDeactivate();
        case OLEIVERB_PROPERTIES:
            return showProperties(parent);
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK; // there is none
        default: {
            if (verb < 0) return E_NOTIMPL;
            const HRESULT result = activate(true); // a number of no verb's means the first
            return FAILED(result) ? result : OLEOBJ_S_INVALIDVERB;
        }
        }
    });
}

STDMETHODIMP ControlShell::Update() { return S_OK; }

STDMETHODIMP ControlShell::IsUpToDate() { return S_OK; }

STDMETHODIMP ControlShell::GetUserClassID(CLSID* id) { return id ? (*id = kControlClass, S_OK) : E_POINTER; }

STDMETHODIMP ControlShell::GetUserType(DWORD, LPOLESTR* type) {
    if (!type) return E_POINTER;
    constexpr wchar_t kName[] = L"Activity log";
    *type = static_cast<LPOLESTR>(CoTaskMemAlloc(sizeof kName));
    if (!*type) return E_OUTOFMEMORY;
    wcscpy(*type, kName);
    return S_OK;
}

STDMETHODIMP ControlShell::SetExtent(DWORD aspect, SIZEL* size) {
    if (!size) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (size->cx < 0 || size->cy < 0) return E_INVALIDARG;
    return firewall([&] {
        picture_.setExtent(*size);
        viewChanged();
        return S_OK;
    });
}

STDMETHODIMP ControlShell::GetExtent(DWORD aspect, SIZEL* size) {
    if (!size) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *size = picture_.extent();
    return S_OK;
}

STDMETHODIMP ControlShell::Advise(IAdviseSink* sink, DWORD* connection) {
    return firewall([&] {
        const HRESULT made = advises_ ? S_OK : CreateOleAdviseHolder(&advises_);
        return FAILED(made) ? made : advises_->Advise(sink, connection);
    });
}

STDMETHODIMP ControlShell::Unadvise(DWORD connection) {
    return firewall([&] { return advises_ ? advises_->Unadvise(connection) : OLE_E_NOCONNECTION; });
}

STDMETHODIMP ControlShell::EnumAdvise(IEnumSTATDATA** connections) {
    if (!connections) return E_POINTER;
    *connections = nullptr;
    return firewall([&] { return advises_ ? advises_->EnumAdvise(connections) : S_OK; });
}

STDMETHODIMP ControlShell::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (!status) return E_POINTER;
    *status = aspect == DVASPECT_CONTENT ? kControlMiscStatus : 0;
    return S_OK;
}

STDMETHODIMP ControlShell::SetColorScheme(LOGPALETTE*) { return E_NOTIMPL; }

STDMETHODIMP ControlShell::GetControlInfo(CONTROLINFO* info) {
    if (!info) return E_POINTER;
    *info = {sizeof(CONTROLINFO), nullptr, 0, CTRLINFO_EATS_RETURN}; // Enter is the list's
    return S_OK;
}

STDMETHODIMP ControlShell::OnMnemonic(MSG*) { return S_OK; }

STDMETHODIMP ControlShell::OnAmbientPropertyChange(DISPID property) {
    return firewall([&] {
        const ComPtr<IUnknown> keep(outer());
        readAmbients(property);
        return S_OK;
    });
}

// The control has no events of its own to hold back: what happens in it is raised by the log, for who listens to that.
STDMETHODIMP ControlShell::FreezeEvents(BOOL) { return S_OK; }

STDMETHODIMP ControlShell::GetClassInfo(ITypeInfo** info) { return typeInfoOf(kControlClass, info); }

STDMETHODIMP ControlShell::GetGUID(DWORD, GUID* id) {
    return id ? (*id = GUID_NULL, E_INVALIDARG) : E_POINTER;
}

STDMETHODIMP ControlShell::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return enumeratePoints(&notifications_, points);
}

STDMETHODIMP ControlShell::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (!point) return E_POINTER;
    const bool known = id == IID_IPropertyNotifySink;
    *point = known ? &notifications_ : nullptr;
    if (!known) return CONNECT_E_NOCONNECTION;
    notifications_.AddRef();
    return S_OK;
}

} // namespace cvlog::com
