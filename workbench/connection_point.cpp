#include "workbench/connection_point.h"

#include <algorithm>
#include <iterator>

namespace workbench {

void ConnectionPoint::raise(DISPID event, const std::vector<Variant>& arguments) {
    std::vector<VARIANT> reversed; // they stay owned by `arguments`
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed),
                   [](const Variant& argument) { return argument.raw(); });
    const auto listeners = listeners_; // a listener may come or go while it is called
    for (const auto& [cookie, listener] : listeners) {
        DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        listener->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                         nullptr);
    }
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (!iid) {
        return E_POINTER;
    }
    *iid = events_;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) {
        return E_POINTER;
    }
    *container = owner_;
    if (!owner_) {
        return E_UNEXPECTED;
    }
    owner_->AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* listener, DWORD* cookie) {
    if (!listener || !cookie) {
        return E_POINTER;
    }
    *cookie = 0;
    ComPtr<IDispatch> dispatch;
    if (FAILED(listener->QueryInterface(events_, reinterpret_cast<void**>(dispatch.GetAddressOf()))) &&
        FAILED(listener->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(dispatch.GetAddressOf())))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = ++lastCookie_;
    listeners_[*cookie] = dispatch;
    return S_OK;
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    return listeners_.erase(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    if (connections) {
        *connections = nullptr;
    }
    return E_NOTIMPL;
}

} // namespace workbench
