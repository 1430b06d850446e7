#include "com/log_shell.h"

#include "com/guids.h"
#include "com/type_library.h"

#include <olectl.h>

namespace cvlog::com {

LogShell::LogShell(IUnknown* outer, std::shared_ptr<Apartment> apartment)
    : DispatchShell(outer, apartment, std::make_shared<core::CVLog>(apartment->globals())),
      events_(*this, *this, kLogEvents, static_cast<core::CVLog&>(*target()).events()) {}

void* LogShell::interfaceOf(REFIID id) noexcept {
    if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2)
        return static_cast<IProvideClassInfo2*>(this);
    if (id == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(this);
    return DispatchShell::interfaceOf(id);
}

const IID* LogShell::dispatchInterface() const noexcept { return &kLogInterface; }

STDMETHODIMP LogShell::GetClassInfo(ITypeInfo** info) { return typeInfoOf(kLogClass, info); }

STDMETHODIMP LogShell::GetGUID(DWORD kind, GUID* id) {
    if (!id) return E_POINTER;
    *id = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? kLogEvents : GUID_NULL;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

STDMETHODIMP LogShell::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return enumeratePoints(&events_, points);
}

STDMETHODIMP LogShell::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (!point) return E_POINTER;
    const bool known = id == kLogEvents || id == IID_IDispatch;
    *point = known ? &events_ : nullptr;
    if (!known) return CONNECT_E_NOCONNECTION;
    events_.AddRef();
    return S_OK;
}

} // namespace cvlog::com
