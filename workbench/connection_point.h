#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <map>
#include <vector>

#include "workbench/com_object.h"
#include "workbench/variant.h"

namespace workbench {

/// The list of those who listen to an object's events. Listeners are called through IDispatch.
class ConnectionPoint : public ComObject<IConnectionPoint> {
public:
    /// `owner` offers this point; it calls `ownerGone` before it dies.
    ConnectionPoint(IConnectionPointContainer* owner, REFIID events) : owner_(owner), events_(events) {}

    void ownerGone() { owner_ = nullptr; }
    REFIID events() const { return events_; }

    /// Calls every listener. A listener's failure is its own.
    void raise(DISPID event, const std::vector<Variant>& arguments = {});

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* listener, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

private:
    IConnectionPointContainer* owner_;
    IID events_;
    std::map<DWORD, ComPtr<IDispatch>> listeners_;
    DWORD lastCookie_ = 0;
};

} // namespace workbench
