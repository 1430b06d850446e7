#include "com/event_point.h"

#include "com/com_ptr.h"
#include "com/event_connection.h"
#include "com/firewall.h"

#include <olectl.h>

namespace cvlog::com {

namespace {

/// Enumerates one connection point.
class PointEnumeration final : public IEnumConnectionPoints {
public:
    PointEnumeration(ComPtr<IConnectionPoint> point, bool done) : point_(std::move(point)), done_(done) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_IEnumConnectionPoints;
        *result = known ? this : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP Next(ULONG count, IConnectionPoint** points, ULONG* fetched) override {
        if (!points || (count > 1 && !fetched)) return E_POINTER;
        const ULONG given = count > 0 && !done_ ? 1 : 0;
        if (given) {
            points[0] = point_.Get();
            points[0]->AddRef();
            done_ = true;
        }
        if (fetched) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const bool enough = count == 0 || (count == 1 && !done_);
        done_ = done_ || count > 0;
        return enough ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        done_ = false;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumConnectionPoints** copy) override {
        if (!copy) return E_POINTER;
        *copy = new (std::nothrow) PointEnumeration(point_, done_);
        return *copy ? S_OK : E_OUTOFMEMORY;
    }

private:
    ModuleLock lock_;
    std::atomic<ULONG> references_{1};
    ComPtr<IConnectionPoint> point_;
    bool done_;
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
    if (!connections) return E_POINTER;
    *connections = nullptr;
    return E_NOTIMPL;
}

HRESULT enumeratePoints(IConnectionPoint* point, IEnumConnectionPoints** points) noexcept {
    if (!points) return E_POINTER;
    *points = new (std::nothrow) PointEnumeration(point, false);
    return *points ? S_OK : E_OUTOFMEMORY;
}

} // namespace cvlog::com
