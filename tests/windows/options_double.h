#pragma once

#include "tests/windows/com_test.h"
#include "tests/windows/script_host.h"

#include <ocidl.h>
#include <olectl.h>

#include <string>

namespace cvlog::tests {

/// A host's options document in COM's terms, with the event that tells of a save. One listener at a time.
class OptionsDouble final : public IDispatch, public IConnectionPointContainer, public IConnectionPoint {
public:
    /// One reference.
    static OptionsDouble* make() { return new OptionsDouble; }

    /// Tells the listener that the options were saved.
    void fireSaved();
    bool hasListener() const { return listener_ != nullptr; }
    /// Some object of the host.
    IDispatch* members() const { return members_.Get(); }

    std::wstring docked = L"false";
    std::wstring errors = L"true"; // whether such lines are shown
    int saves = 0;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return members_->GetIDsOfNames(id, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* info, UINT* bad) override {
        return members_->Invoke(id, iid, locale, flags, parameters, result, info, bad);
    }

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
    STDMETHODIMP GetConnectionInterface(IID* id) override { return *id = IID_IDispatch, S_OK; }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override {
        return AddRef(), *container = this, S_OK;
    }
    STDMETHODIMP Advise(IUnknown* listener, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

private:
    OptionsDouble();
    ~OptionsDouble() = default;
    IDispatch* nodeFor(const std::wstring& query);

    ULONG references_ = 1;
    ComPtr<ScriptedDispatch> members_;
    ComPtr<IDispatch> listener_;
};

} // namespace cvlog::tests
