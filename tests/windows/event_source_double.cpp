#include "tests/windows/event_source_double.h"

#include <vector>

namespace cvlog::tests {

void EventSourceDouble::fire(DISPID id, std::initializer_list<Variant> arguments) {
    std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if (const ComPtr<IDispatch> keep = listener_)
        keep->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                     nullptr);
}

STDMETHODIMP EventSourceDouble::QueryInterface(REFIID id, void** result) {
    *result = nullptr;
    if (id == IID_IUnknown || id == IID_IDispatch) *result = static_cast<IDispatch*>(this);
    if (id == IID_IConnectionPointContainer) *result = static_cast<IConnectionPointContainer*>(this);
    return *result ? (AddRef(), S_OK) : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) EventSourceDouble::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP EventSourceDouble::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    *point = id == IID_IDispatch ? this : nullptr;
    return *point ? (AddRef(), S_OK) : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP EventSourceDouble::Advise(IUnknown* listener, DWORD* cookie) {
    if (FAILED(adviseAnswer)) return adviseAnswer;
    if (listener_) return CONNECT_E_ADVISELIMIT;
    ++advised;
    *cookie = kCookie;
    return listener->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(listener_.GetAddressOf()));
}

STDMETHODIMP EventSourceDouble::Unadvise(DWORD cookie) {
    if (FAILED(unadviseAnswer)) return unadviseAnswer;
    if (cookie != kCookie || !listener_) return CONNECT_E_NOCONNECTION;
    listener_.Reset();
    return S_OK;
}

} // namespace cvlog::tests
