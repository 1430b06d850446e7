#include "com/variants.h"

#include "com/object_bridge.h"

#include <ole2.h>

#include <new>

namespace cvlog::com {

namespace {

using automation::AutomationError;
using automation::Value;

[[noreturn]] void mismatch() { throw AutomationError(automation::code::kTypeMismatch, u"Type mismatch"); }

Value fromError(SCODE code) {
    if (code == DISP_E_PARAMNOTFOUND) return automation::Missing{};
    return automation::ErrorCode{code};
}

Value fromUnknown(IUnknown* unknown) {
    if (!unknown) return automation::ObjectRef();
    IDispatch* dispatch = nullptr;
    if (FAILED(unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)))) mismatch();
    const automation::ObjectRef object = toObject(dispatch);
    dispatch->Release();
    return object;
}

Value fromDecimal(const DECIMAL& decimal) {
    double number = 0;
    if (FAILED(VarR8FromDec(const_cast<DECIMAL*>(&decimal), &number))) mismatch();
    return number;
}

Value fromUnsigned(ULONGLONG number) {
    if (number > static_cast<ULONGLONG>(INT64_MAX)) return static_cast<double>(number);
    return static_cast<std::int64_t>(number);
}

// The content of a variant whose type has no by-reference bit, or of the place a by-reference one points to.
Value fromContent(VARTYPE type, const void* content) {
    const auto as = [content]<class T>(T) { return *static_cast<const T*>(content); };
    switch (type) {
    case VT_I1:
        return static_cast<std::int16_t>(as(CHAR()));
    case VT_UI1:
        return static_cast<std::int16_t>(as(BYTE()));
    case VT_I2:
        return static_cast<std::int16_t>(as(SHORT()));
    case VT_UI2:
        return static_cast<std::int32_t>(as(USHORT()));
    case VT_I4:
    case VT_INT:
        return static_cast<std::int32_t>(as(LONG()));
    case VT_UI4:
    case VT_UINT:
        return static_cast<std::int64_t>(as(ULONG()));
    case VT_I8:
        return static_cast<std::int64_t>(as(LONGLONG()));
    case VT_UI8:
        return fromUnsigned(as(ULONGLONG()));
    case VT_R4:
        return as(FLOAT());
    case VT_R8:
        return as(DOUBLE());
    case VT_CY:
        return static_cast<double>(as(LONGLONG())) / 10'000;
    case VT_DATE:
        return automation::Date{as(DOUBLE())};
    case VT_BOOL:
        return as(VARIANT_BOOL()) != VARIANT_FALSE;
    case VT_BSTR:
        return std::u16string(view(as(BSTR())));
    case VT_ERROR:
        return fromError(as(SCODE()));
    case VT_DISPATCH:
        return toObject(as(static_cast<IDispatch*>(nullptr)));
    case VT_UNKNOWN:
        return fromUnknown(as(static_cast<IUnknown*>(nullptr)));
    default:
        mismatch();
    }
}

void setObject(const automation::ObjectRef& object, VARIANT* variant) {
    IDispatch* dispatch = toDispatch(object);
    variant->vt = VT_DISPATCH;
    variant->pdispVal = dispatch;
}

struct Filler {
    VARIANT* out;
    void operator()(automation::Empty) const { out->vt = VT_EMPTY; }
    void operator()(automation::Null) const { out->vt = VT_NULL; }
    void operator()(automation::Missing) const { (*this)(automation::ErrorCode{DISP_E_PARAMNOTFOUND}); }
    void operator()(bool value) const {
        out->vt = VT_BOOL, out->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(std::int16_t value) const { out->vt = VT_I2, out->iVal = value; }
    void operator()(std::int32_t value) const { out->vt = VT_I4, out->lVal = value; }
    void operator()(std::int64_t value) const { out->vt = VT_I8, out->llVal = value; }
    void operator()(float value) const { out->vt = VT_R4, out->fltVal = value; }
    void operator()(double value) const { out->vt = VT_R8, out->dblVal = value; }
    void operator()(automation::Date value) const { out->vt = VT_DATE, out->date = value.days; }
    void operator()(automation::ErrorCode value) const { out->vt = VT_ERROR, out->scode = value.code; }
    void operator()(const std::u16string& value) const {
        BSTR text = makeBstr(value);
        out->vt = VT_BSTR, out->bstrVal = text;
    }
    void operator()(const automation::ObjectRef& value) const { setObject(value, out); }
};

} // namespace

BSTR makeBstr(std::u16string_view text) {
    BSTR copy = SysAllocStringLen(wide(text.data()), static_cast<UINT>(text.size()));
    if (!copy) throw std::bad_alloc();
    return copy;
}

Value fromVariant(const VARIANT& variant) {
    if (variant.vt == VT_EMPTY) return {};
    if (variant.vt == VT_NULL) return automation::Null{};
    if (variant.vt == VT_DECIMAL) return fromDecimal(variant.decVal);
    if ((variant.vt & VT_BYREF) == 0) return fromContent(variant.vt, &variant.llVal);
    if (!variant.byref) throw AutomationError(automation::code::kPointer, u"Null reference");
    const auto type = static_cast<VARTYPE>(variant.vt & ~VT_BYREF);
    if (type == VT_VARIANT) return fromVariant(*variant.pvarVal);
    if (type == VT_DECIMAL) return fromDecimal(*variant.pdecVal);
    return fromContent(type, variant.byref);
}

void toVariant(const Value& value, VARIANT* variant) {
    VariantInit(variant);
    std::visit(Filler{variant}, value.storage());
}

void writeBack(const VARIANT& reference, const Value& value) {
    if ((reference.vt & VT_BYREF) == 0 || !reference.byref) return;
    VARIANT made;
    toVariant(value, &made);
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    if (type == VT_VARIANT) {
        if (reference.pvarVal->vt & VT_BYREF) {
            VariantClear(&made);
            writeBack(*reference.pvarVal, value);
        } else {
            VariantClear(reference.pvarVal);
            *reference.pvarVal = made;
        }
        return;
    }
    if (FAILED(VariantChangeTypeEx(&made, &made, LOCALE_INVARIANT, 0, type))) {
        VariantClear(&made);
        mismatch();
    }
    switch (type) {
    case VT_I2:
        *reference.piVal = made.iVal;
        break;
    case VT_I4:
        *reference.plVal = made.lVal;
        break;
    case VT_R4:
        *reference.pfltVal = made.fltVal;
        break;
    case VT_R8:
        *reference.pdblVal = made.dblVal;
        break;
    case VT_BOOL:
        *reference.pboolVal = made.boolVal;
        break;
    case VT_BSTR:
        SysFreeString(*reference.pbstrVal);
        *reference.pbstrVal = made.bstrVal;
        break;
    case VT_DISPATCH:
        if (*reference.ppdispVal) (*reference.ppdispVal)->Release();
        *reference.ppdispVal = made.pdispVal;
        break;
    default:
        VariantClear(&made);
        mismatch();
    }
}

void fillExcepInfo(const AutomationError& error, EXCEPINFO* info) {
    if (!info) return;
    *info = {};
    info->scode = error.code();
    info->bstrSource = makeBstr(error.source().empty() ? std::u16string_view(u"CVLog3") : error.source());
    info->bstrDescription = makeBstr(error.description());
}

void setErrorInfo(const AutomationError& error) noexcept {
    ICreateErrorInfo* creation = nullptr;
    if (FAILED(CreateErrorInfo(&creation))) return;
    const std::u16string source = error.source().empty() ? u"CVLog3" : error.source();
    creation->SetSource(const_cast<wchar_t*>(wide(source.c_str())));
    creation->SetDescription(const_cast<wchar_t*>(wide(error.description().c_str())));
    IErrorInfo* info = nullptr;
    if (SUCCEEDED(creation->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) {
        SetErrorInfo(0, info);
        info->Release();
    }
    creation->Release();
}

} // namespace cvlog::com
