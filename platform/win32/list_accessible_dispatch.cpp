// The late-bound face of a list's accessible object, by the system's own type library.

#include "platform/win32/list_accessible.h"

namespace cvlog::platform::win32 {

namespace {

/// The interface's description, with a reference of the caller's own; fails where the system has none.
HRESULT describeAccessible(ITypeInfo** info) noexcept {
    ITypeLib* library = nullptr;
    if (const HRESULT loaded = LoadTypeLibEx(L"oleacc.dll", REGKIND_NONE, &library); FAILED(loaded))
        return loaded;
    const HRESULT done = library->GetTypeInfoOfGuid(__uuidof(IAccessible), info);
    library->Release();
    return done;
}

template <class Use>
HRESULT withDescription(Use&& use) noexcept {
    ITypeInfo* info = nullptr;
    if (const HRESULT found = describeAccessible(&info); FAILED(found)) return found;
    const HRESULT done = use(info);
    info->Release();
    return done;
}

} // namespace

STDMETHODIMP ListAccessible::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = SUCCEEDED(withDescription([](ITypeInfo*) { return S_OK; })) ? 1 : 0;
    return S_OK;
}

STDMETHODIMP ListAccessible::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    return index == 0 ? describeAccessible(info) : DISP_E_BADINDEX;
}

STDMETHODIMP ListAccessible::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return withDescription([&](ITypeInfo* info) { return info->GetIDsOfNames(names, count, ids); });
}

STDMETHODIMP ListAccessible::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                    VARIANT* result, EXCEPINFO* exception, UINT* argument) {
    return withDescription([&](ITypeInfo* info) {
        return info->Invoke(static_cast<IAccessible*>(this), member, flags, parameters, result, exception,
                            argument);
    });
}

} // namespace cvlog::platform::win32
