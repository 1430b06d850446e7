#include "com/com_object.h"

namespace cvlog::com {

STDMETHODIMP ComObject::Inner::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    if (id == IID_IUnknown) {
        *result = static_cast<IUnknown*>(this);
        AddRef();
        return S_OK;
    }
    *result = object_.interfaceOf(id);
    if (!*result) return E_NOINTERFACE;
    object_.outer()->AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) ComObject::Inner::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        references_ = 1; // code that runs while the object goes may take and give back references
        delete &object_;
    }
    return left;
}

} // namespace cvlog::com
