#pragma once

#include "tests/windows/com_test.h"

#include <optional>
#include <string>
#include <vector>

namespace cvlog::tests {

inline constexpr DISPID kAdd = 0x6003000e;
inline constexpr DISPID kOpenDb = 0x60030011;
inline constexpr DISPID kKeyDown = 0x60030019;

template <class Fill>
Variant made(VARTYPE type, Fill fill) {
    Variant variant;
    variant.vt = type;
    fill(variant);
    return variant;
}
inline Variant ofInt16(SHORT number) {
    return made(VT_I2, [&](VARIANT& v) { v.iVal = number; });
}
inline Variant ofDouble(DOUBLE number) {
    return made(VT_R8, [&](VARIANT& v) { v.dblVal = number; });
}
inline Variant ofNull() {
    return made(VT_NULL, [](VARIANT&) {});
}
/// An optional argument that was left out.
inline Variant leftOut() {
    return made(VT_ERROR, [](VARIANT& v) { v.scode = DISP_E_PARAMNOTFOUND; });
}
/// A variant that refers to what the test holds.
inline Variant byReference(VARTYPE type, void* place) {
    return made(static_cast<VARTYPE>(type | VT_BYREF), [&](VARIANT& v) { v.byref = place; });
}

/// One Invoke, in the terms of IDispatch; every way to be told of a failure is open.
struct InvokeCall {
    DISPID id = 0;
    WORD flags = DISPATCH_METHOD;
    std::vector<Variant> positional; // in the order of the call
    std::vector<std::pair<DISPID, Variant>> named;

    struct Outcome {
        HRESULT result = S_OK;
        std::optional<UINT>
            badArgument;     // an index into the variants: last argument first, before them the named ones
        HRESULT code = S_OK; // what follows is the exception's
        WORD wordCode = 0;
        std::wstring source;
        std::wstring description;
        Variant value;
    };

    Outcome on(IDispatch* object) const {
        std::vector<VARIANT> variants;
        std::vector<DISPID> names;
        for (const auto& [name, value] : named) names.push_back(name), variants.push_back(value);
        for (auto i = positional.rbegin(); i != positional.rend(); ++i) variants.push_back(*i);
        DISPPARAMS parameters = {variants.data(), names.data(), static_cast<UINT>(variants.size()),
                                 static_cast<UINT>(names.size())};
        constexpr UINT kUntouched = 4711;
        UINT bad = kUntouched;
        EXCEPINFO info = {};
        Outcome outcome;
        outcome.result = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &outcome.value,
                                        &info, &bad);
        if (bad != kUntouched) outcome.badArgument = bad;
        outcome.code = info.scode;
        outcome.wordCode = info.wCode;
        outcome.source.assign(info.bstrSource ? info.bstrSource : L"");
        outcome.description.assign(info.bstrDescription ? info.bstrDescription : L"");
        SysFreeString(info.bstrSource);
        SysFreeString(info.bstrDescription);
        SysFreeString(info.bstrHelpFile);
        return outcome;
    }
};

} // namespace cvlog::tests
