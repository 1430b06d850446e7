#pragma once

#include "automation/dispatch_table.h"
#include "com/apartment.h"
#include "com/com_object.h"

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>

#include <memory>

namespace cvlog::com {

/// One of our objects as its clients see it: an IDispatch over the object's dispatch table.
class DispatchShell : public ComObject, public IDispatch, public ISupportErrorInfo {
public:
    DispatchShell(IUnknown* outer, std::shared_ptr<Apartment> apartment,
                  std::shared_ptr<automation::DispatchObject> target);
    ~DispatchShell() override;

    CVLOG_DELEGATE_UNKNOWN()

    const std::shared_ptr<automation::DispatchObject>& target() const noexcept { return target_; }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override;

protected:
    void* interfaceOf(REFIID id) noexcept override;
    /// The dispinterface in the type library; null for an object that has none there.
    virtual const IID* dispatchInterface() const noexcept { return nullptr; }
    Apartment& apartment() const noexcept { return *apartment_; }

private:
    /// Where the caller wants to be told; each may be null.
    struct InvokeAnswer {
        VARIANT* result;
        EXCEPINFO* exception;
        UINT* badArgument;
    };
    static HRESULT invokeMember(automation::DispatchObject& target, const automation::Member& member,
                                const DISPPARAMS& parameters, const InvokeAnswer& answer);

    std::shared_ptr<Apartment> apartment_;
    std::shared_ptr<automation::DispatchObject> target_;
};

} // namespace cvlog::com
