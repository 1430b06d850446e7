#include "com/event_point.h"

#include "com/enumeration.h"
#include "com/event_connection.h"
#include "com/firewall.h"

#include <olectl.h>

namespace cvlog::com {

namespace {

struct Points {
    using Interface = IEnumConnectionPoints;
    using Element = IConnectionPoint*;
    using Item = ComPtr<IConnectionPoint>;
    static Element give(const Item& item) noexcept {
        item->AddRef();
        return item.Get();
    }
};

struct Connections {
    using Interface = IEnumConnections;
    using Element = CONNECTDATA;
    using Item = ConnectionItem;
    static Element give(const Item& item) noexcept {
        item.sink->AddRef();
        return {item.sink.Get(), item.cookie};
    }
};

} // namespace

STDMETHODIMP EventPoint::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IConnectionPoint;
    *result = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP EventPoint::GetConnectionInterface(IID* id) { return id ? (*id = events_, S_OK) : E_POINTER; }

STDMETHODIMP EventPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) return E_POINTER;
    *container = &container_;
    container_.AddRef();
    return S_OK;
}

STDMETHODIMP EventPoint::Advise(IUnknown* sink, DWORD* cookie) {
    return firewall([&]() -> HRESULT {
        if (!sink || !cookie) return E_POINTER;
        *cookie = 0;
        ComPtr<IDispatch> dispatch;
        if (FAILED(sink->QueryInterface(events_, &dispatch)) &&
            FAILED(sink->QueryInterface(IID_IDispatch, &dispatch)))
            return CONNECT_E_CANNOTCONNECT;
        *cookie = source_.advise(makeHostSink(dispatch.Get()));
        return S_OK;
    });
}

STDMETHODIMP EventPoint::Unadvise(DWORD cookie) {
    return source_.unadvise(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP EventPoint::EnumConnections(IEnumConnections** connections) {
    return firewall([&] {
        std::vector<ConnectionItem> items;
        for (const auto& [cookie, sink] : source_.connections())
            if (IUnknown* host = hostSinkOf(*sink)) items.push_back({host, cookie});
        return enumerateConnections(std::move(items), connections);
    });
}

HRESULT enumerateConnections(std::vector<ConnectionItem> items, IEnumConnections** connections) noexcept {
    return Enumeration<Connections>::make(std::move(items), connections);
}

HRESULT enumeratePoints(IConnectionPoint* point, IEnumConnectionPoints** points) noexcept {
    return firewall([&] { return Enumeration<Points>::make({point}, points); });
}

} // namespace cvlog::com
