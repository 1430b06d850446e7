#include "com/notify_point.h"

#include "com/event_point.h"
#include "com/firewall.h"

#include <olectl.h>

#include <algorithm>

namespace cvlog::com {

STDMETHODIMP NotifyPoint::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IConnectionPoint;
    *result = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP NotifyPoint::GetConnectionInterface(IID* id) {
    return id ? (*id = IID_IPropertyNotifySink, S_OK) : E_POINTER;
}

STDMETHODIMP NotifyPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) return E_POINTER;
    *container = &container_;
    container_.AddRef();
    return S_OK;
}

STDMETHODIMP NotifyPoint::Advise(IUnknown* sink, DWORD* cookie) {
    return firewall([&]() -> HRESULT {
        if (!sink || !cookie) return E_POINTER;
        *cookie = 0;
        ComPtr<IPropertyNotifySink> notified;
        if (FAILED(sink->QueryInterface(IID_IPropertyNotifySink, &notified))) return CONNECT_E_CANNOTCONNECT;
        sinks_.emplace_back(++lastCookie_, notified);
        *cookie = lastCookie_;
        return S_OK;
    });
}

STDMETHODIMP NotifyPoint::Unadvise(DWORD cookie) {
    return firewall([&]() -> HRESULT {
        const auto found = std::find_if(sinks_.begin(), sinks_.end(),
                                        [cookie](const Sink& sink) { return sink.first == cookie; });
        if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
        const Sink released = *found; // the sink may run code when it dies: only after the list is whole
        sinks_.erase(found);
        return S_OK;
    });
}

STDMETHODIMP NotifyPoint::EnumConnections(IEnumConnections** connections) {
    return firewall([&] {
        std::vector<ConnectionItem> items;
        for (const auto& [cookie, sink] : sinks_) items.push_back({sink, cookie});
        return enumerateConnections(std::move(items), connections);
    });
}

bool NotifyPoint::isConnected(DWORD cookie) const noexcept {
    return std::any_of(sinks_.begin(), sinks_.end(),
                       [cookie](const Sink& sink) { return sink.first == cookie; });
}

bool NotifyPoint::mayChange(DISPID property) {
    const auto snapshot = sinks_;
    return std::none_of(snapshot.begin(), snapshot.end(), [&](const Sink& sink) {
        return isConnected(sink.first) && sink.second->OnRequestEdit(property) == S_FALSE;
    });
}

void NotifyPoint::changed(DISPID property) {
    const auto snapshot = sinks_;
    for (const auto& [cookie, sink] : snapshot)
        if (isConnected(cookie)) sink->OnChanged(property);
}

} // namespace cvlog::com
