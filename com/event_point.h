#pragma once

#include "automation/event_source.h"
#include "com/com_object.h"
#include "com/com_ptr.h"

#include <windows.h>

#include <ocidl.h>

#include <vector>

namespace cvlog::com {

/// The point where hosts connect their sinks to the events of one of our objects. Part of that object: its references
/// are the object's.
class EventPoint final : public IConnectionPoint {
public:
    EventPoint(const ComObject& owner, IConnectionPointContainer& container, const IID& events,
               automation::EventSource& source)
        : owner_(owner), container_(container), events_(events), source_(source) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return owner_.outer()->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return owner_.outer()->Release(); }

    STDMETHODIMP GetConnectionInterface(IID* id) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

private:
    const ComObject& owner_;
    IConnectionPointContainer& container_;
    IID events_;
    automation::EventSource& source_;
};

/// A sink and the cookie that its client has got.
struct ConnectionItem {
    ComPtr<IUnknown> sink;
    DWORD cookie;
};

/// An enumeration of a point's connections.
HRESULT enumerateConnections(std::vector<ConnectionItem> items, IEnumConnections** connections) noexcept;

/// An enumeration of a single connection point.
HRESULT enumeratePoints(IConnectionPoint* point, IEnumConnectionPoints** points) noexcept;

} // namespace cvlog::com
