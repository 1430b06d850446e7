#pragma once

#include "com/com_object.h"
#include "com/com_ptr.h"

#include <windows.h>

#include <ocidl.h>

#include <utility>
#include <vector>

namespace cvlog::com {

/// The point where containers connect to hear of changed properties and to be asked before. Part of its object: its
/// references are the object's. Sinks may connect, disconnect and fail while they are called; whoever calls
/// mayChange() or changed() holds the object.
class NotifyPoint final : public IConnectionPoint {
public:
    NotifyPoint(const ComObject& owner, IConnectionPointContainer& container)
        : owner_(owner), container_(container) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return owner_.outer()->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return owner_.outer()->Release(); }

    STDMETHODIMP GetConnectionInterface(IID* id) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

    /// False when a sink refuses. A sink that fails refuses nothing.
    bool mayChange(DISPID property);
    void changed(DISPID property);

private:
    using Sink = std::pair<DWORD, ComPtr<IPropertyNotifySink>>;

    bool isConnected(DWORD cookie) const noexcept;

    const ComObject& owner_;
    IConnectionPointContainer& container_;
    std::vector<Sink> sinks_;
    DWORD lastCookie_ = 0;
};

} // namespace cvlog::com
