#pragma once

#include "com/dispatch_shell.h"
#include "com/event_point.h"
#include "core/cv_log.h"

namespace cvlog::com {

/// The class CVLog: the log object with its events and its place in the type library.
class LogShell final : public DispatchShell, public IProvideClassInfo2, public IConnectionPointContainer {
public:
    LogShell(IUnknown* outer, std::shared_ptr<Apartment> apartment);

    CVLOG_DELEGATE_UNKNOWN()

    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

protected:
    void* interfaceOf(REFIID id) noexcept override;
    const IID* dispatchInterface() const noexcept override;

private:
    EventPoint events_;
};

} // namespace cvlog::com
