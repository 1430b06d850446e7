#pragma once

#include "automation/dispatch_table.h"
#include "tests/windows/com_test.h"

#include <windows.h>

#include <ole2.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::tests {

/// A portable double as a foreign program shows its objects: an IDispatch of its own making. One object has one.
class DispatchDouble final : public IDispatch {
public:
    /// A new reference.
    static DispatchDouble* of(const std::shared_ptr<automation::DispatchObject>& object);
    static int alive() { return alive_; }

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* info, UINT* bad) override;

private:
    explicit DispatchDouble(std::shared_ptr<automation::DispatchObject> object) : object_(std::move(object)) {
        ++alive_;
    }
    ~DispatchDouble();
    automation::Value run(const std::u16string& member, WORD flags, const DISPPARAMS& parameters);

    static inline int alive_ = 0;
    ULONG references_ = 1;
    std::shared_ptr<automation::DispatchObject> object_;
    std::vector<std::u16string> names_{u""}; // by dispatch id; the default member first
};

/// A class that makes such objects, installed for this process and by name for the system until its end.
class InstalledClass {
public:
    using Make = std::function<std::shared_ptr<automation::DispatchObject>()>;

    InstalledClass(std::wstring progId, const CLSID& id, Make make);
    ~InstalledClass();
    InstalledClass(const InstalledClass&) = delete;
    InstalledClass& operator=(const InstalledClass&) = delete;

private:
    std::wstring key_;
    DWORD cookie_ = 0;
};

} // namespace cvlog::tests
