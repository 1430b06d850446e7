#include "tests/windows/options_double.h"

namespace cvlog::tests {

namespace {

constexpr DISPID kSaved = 1;
constexpr DWORD kCookie = 7;

std::wstring textOf(const VARIANT& value) {
    return value.vt == VT_BSTR && value.bstrVal ? value.bstrVal : L"";
}

} // namespace

OptionsDouble::OptionsDouble() : members_(com::adopt(ScriptedDispatch::make())) {
    members_->member(L"selectSingleNode", [this](ScriptedDispatch::Arguments& a, VARIANT* result) {
        if (IDispatch* node = nodeFor(textOf(a.at(0)))) {
            result->vt = VT_DISPATCH;
            result->pdispVal = node;
        }
        return S_OK;
    });
    members_->member(L"Save", [this](ScriptedDispatch::Arguments&, VARIANT*) {
        ++saves;
        fireSaved();
        return S_OK;
    });
}

IDispatch* OptionsDouble::nodeFor(const std::wstring& query) {
    const bool isDocked = query.find(L"LogDocked") != std::wstring::npos;
    if (!isDocked && query.find(L"ErrorsList") == std::wstring::npos) return nullptr;
    std::wstring& value = isDocked ? docked : errors;
    ScriptedDispatch* node = ScriptedDispatch::make();
    node->member(L"getAttribute", [&value](ScriptedDispatch::Arguments& a, VARIANT* result) {
        giveText(result, textOf(a.at(0)) == L"VALUE" ? value : L"Errors");
        return S_OK;
    });
    node->member(L"setAttribute", [&value](ScriptedDispatch::Arguments& a, VARIANT*) {
        value = textOf(a.at(1));
        return S_OK;
    });
    node->member(L"nextSibling", [](ScriptedDispatch::Arguments&, VARIANT*) { return S_OK; });
    return node;
}

void OptionsDouble::fireSaved() {
    DISPPARAMS none = {};
    if (const ComPtr<IDispatch> keep = listener_)
        keep->Invoke(kSaved, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr,
                     nullptr);
}

STDMETHODIMP OptionsDouble::QueryInterface(REFIID id, void** result) {
    *result = nullptr;
    if (id == IID_IUnknown || id == IID_IDispatch) *result = static_cast<IDispatch*>(this);
    if (id == IID_IConnectionPointContainer) *result = static_cast<IConnectionPointContainer*>(this);
    return *result ? (AddRef(), S_OK) : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) OptionsDouble::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP OptionsDouble::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    *point = id == IID_IDispatch ? this : nullptr;
    return *point ? (AddRef(), S_OK) : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP OptionsDouble::Advise(IUnknown* listener, DWORD* cookie) {
    if (listener_) return CONNECT_E_ADVISELIMIT;
    *cookie = kCookie;
    return listener->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(listener_.GetAddressOf()));
}

STDMETHODIMP OptionsDouble::Unadvise(DWORD cookie) {
    if (cookie != kCookie || !listener_) return CONNECT_E_NOCONNECTION;
    listener_.Reset();
    return S_OK;
}

} // namespace cvlog::tests
