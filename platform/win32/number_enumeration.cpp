#include "platform/win32/number_enumeration.h"

#include <algorithm>
#include <new>

namespace cvlog::platform::win32 {

STDMETHODIMP NumberEnumeration::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IEnumVARIANT;
    *result = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) NumberEnumeration::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP NumberEnumeration::Next(ULONG count, VARIANT* elements, ULONG* fetched) {
    if (fetched) *fetched = 0;
    if (!elements || (count != 1 && !fetched)) return E_POINTER;
    const ULONG given = std::min(count, left());
    for (ULONG i = 0; i < given; ++i) {
        elements[i].vt = VT_I4;
        elements[i].lVal = (*numbers_)[next_++];
    }
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
}

STDMETHODIMP NumberEnumeration::Skip(ULONG count) {
    const ULONG skipped = std::min(count, left());
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
}

STDMETHODIMP NumberEnumeration::Reset() {
    next_ = 0;
    return S_OK;
}

STDMETHODIMP NumberEnumeration::Clone(IEnumVARIANT** copy) {
    if (!copy) return E_POINTER;
    *copy = new (std::nothrow) NumberEnumeration(numbers_, lock_, next_);
    return *copy ? S_OK : E_OUTOFMEMORY;
}

} // namespace cvlog::platform::win32
