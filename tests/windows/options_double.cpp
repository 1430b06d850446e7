#include "tests/windows/options_double.h"

namespace cvlog::tests {

namespace {

constexpr DISPID kSaved = 1;

std::wstring textOf(const VARIANT& value) {
    return value.vt == VT_BSTR && value.bstrVal ? value.bstrVal : L"";
}

} // namespace

OptionsDouble::OptionsDouble() : EventSourceDouble(com::adopt<IDispatch>(ScriptedDispatch::make())) {
    auto* own = static_cast<ScriptedDispatch*>(members());
    own->member(L"selectSingleNode", [this](ScriptedDispatch::Arguments& a, VARIANT* result) {
        if (IDispatch* node = nodeFor(textOf(a.at(0)))) {
            result->vt = VT_DISPATCH;
            result->pdispVal = node;
        }
        return S_OK;
    });
    own->member(L"Save", [this](ScriptedDispatch::Arguments&, VARIANT*) {
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

void OptionsDouble::fireSaved() { fire(kSaved); }

} // namespace cvlog::tests
