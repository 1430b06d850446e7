#pragma once

#include "tests/windows/com_test.h"
#include "tests/windows/script_host.h"

#include <ocidl.h>
#include <olectl.h>

#include <initializer_list>

namespace cvlog::tests {

/// An object of a host that raises events, in COM's terms: its members are another object's, its events go out by a
/// connection point. One listener at a time.
class EventSourceDouble : public IDispatch, public IConnectionPointContainer, public IConnectionPoint {
public:
    static constexpr DWORD kCookie = 7; // of every connection

    /// With one reference.
    explicit EventSourceDouble(ComPtr<IDispatch> members) : members_(std::move(members)) {}

    /// Tells the listener, if there is one. Arguments in the order of the call.
    void fire(DISPID id, std::initializer_list<Variant> arguments = {});
    bool hasListener() const { return listener_ != nullptr; }
    IDispatch* listener() const { return listener_.Get(); }
    IDispatch* members() const { return members_.Get(); }

    int advised = 0;               // times that somebody was let in
    HRESULT adviseAnswer = S_OK;   // a failure lets nobody in
    HRESULT unadviseAnswer = S_OK; // a failure lets nobody out

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

protected:
    virtual ~EventSourceDouble() = default;

private:
    ULONG references_ = 1;
    ComPtr<IDispatch> members_;
    ComPtr<IDispatch> listener_;
};

} // namespace cvlog::tests
