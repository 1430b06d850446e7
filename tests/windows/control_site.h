#pragma once

#include "tests/windows/com_test.h"

#include <ocidl.h>
#include <olectl.h>
#include <oleidl.h>

#include <map>

namespace cvlog::tests {

/// The least a container can be: a site that activates nothing and answers with ambient properties.
class ControlSite final : public IOleClientSite, public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        *result = nullptr;
        if (id == IID_IUnknown || id == IID_IOleClientSite) *result = static_cast<IOleClientSite*>(this);
        if (id == IID_IDispatch) *result = static_cast<IDispatch*>(this);
        return *result ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        const auto found = ambients.find(id);
        return found == ambients.end() ? DISP_E_MEMBERNOTFOUND : VariantCopy(result, &found->second);
    }

    /// Changes an ambient property and tells the control.
    void change(IDispatch* control, DISPID id, const VARIANT& value) {
        set(id, value);
        ComPtr<IOleControl> told;
        ASSERT_EQ(control->QueryInterface(IID_IOleControl, &told), S_OK);
        EXPECT_EQ(told->OnAmbientPropertyChange(id), S_OK);
    }
    void set(DISPID id, const VARIANT& value) { VariantCopy(&ambients[id], const_cast<VARIANT*>(&value)); }
    /// Gives the control this site, or takes it away.
    void attach(IDispatch* control, bool attached = true) {
        ComPtr<IOleObject> object;
        ASSERT_EQ(control->QueryInterface(IID_IOleObject, &object), S_OK);
        EXPECT_EQ(object->SetClientSite(attached ? this : nullptr), S_OK);
    }

    std::map<DISPID, Variant> ambients;
    ULONG references = 1;
};

inline Variant truth(bool value) {
    Variant made;
    made.vt = VT_BOOL;
    made.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return made;
}

} // namespace cvlog::tests
