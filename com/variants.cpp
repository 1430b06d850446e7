#include "com/variants.h"

#include "base/failure.h"
#include "com/object_bridge.h"

#include <ole2.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

namespace cvlog::com {

namespace {

using automation::AutomationError;
using automation::Value;

/// A variant of our own, freed on every path.
struct OwnVariant : VARIANT {
    OwnVariant() { VariantInit(this); }
    ~OwnVariant() { VariantClear(this); }
    OwnVariant(const OwnVariant&) = delete;
    OwnVariant& operator=(const OwnVariant&) = delete;
};

constexpr int kMostReferences = 8;
constexpr std::u16string_view kOwnSource = u"CVLog3";

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

std::size_t sizeOf(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    default:
        mismatch();
    }
}

// Puts the content of a variant in a place of the same type, and the other way round: what the place owned goes with the
// variant, when the new content is already there.
void exchange(VARTYPE type, void* place, VARIANT& made) {
    if (type == VT_DECIMAL) {
        // A variant has its type where a decimal has bits that mean nothing.
        const USHORT kept = static_cast<DECIMAL*>(place)->wReserved;
        *static_cast<DECIMAL*>(place) = made.decVal;
        static_cast<DECIMAL*>(place)->wReserved = kept;
        return;
    }
    auto* bytes = static_cast<std::byte*>(place);
    std::swap_ranges(bytes, bytes + sizeOf(type), reinterpret_cast<std::byte*>(&made.llVal));
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
    const VARIANT* followed = &variant;
    for (int i = 0; followed->vt == (VT_BYREF | VT_VARIANT); ++i) {
        if (i == kMostReferences || !followed->pvarVal) mismatch();
        followed = followed->pvarVal;
    }
    if (followed->vt == VT_EMPTY) return {};
    if (followed->vt == VT_NULL) return automation::Null{};
    if (followed->vt == VT_DECIMAL) return fromDecimal(followed->decVal);
    if ((followed->vt & VT_BYREF) == 0) return fromContent(followed->vt, &followed->llVal);
    if (!followed->byref) mismatch();
    const auto type = static_cast<VARTYPE>(followed->vt & ~VT_BYREF);
    return type == VT_DECIMAL ? fromDecimal(*followed->pdecVal) : fromContent(type, followed->byref);
}

void toVariant(const Value& value, VARIANT* variant) {
    VariantInit(variant);
    std::visit(Filler{variant}, value.storage());
}

void writeBack(const VARIANT& reference, const Value& value) {
    if ((reference.vt & VT_BYREF) == 0 || !reference.byref) return;
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    if (type == VT_VARIANT && (reference.pvarVal->vt & VT_BYREF)) return writeBack(*reference.pvarVal, value);
    OwnVariant made;
    toVariant(value, &made);
    if (type == VT_VARIANT)
        std::swap(*reference.pvarVal, static_cast<VARIANT&>(made));
    else if (SUCCEEDED(VariantChangeTypeEx(&made, &made, LOCALE_INVARIANT, 0, type)))
        exchange(type, reference.byref, made);
    else
        mismatch();
}

HRESULT failureOf(const AutomationError& error) noexcept {
    return FAILED(error.code()) ? error.code() : DISP_E_EXCEPTION;
}

void fillExcepInfo(const AutomationError& error, EXCEPINFO* info) noexcept {
    *info = {};
    info->scode = error.code();
    const std::u16string_view source = error.source().empty() ? kOwnSource : error.source();
    base::ignoring([&] { info->bstrSource = makeBstr(source); });
    base::ignoring([&] { info->bstrDescription = makeBstr(error.description()); });
}

void setErrorInfo(const AutomationError& error) noexcept {
    SetErrorInfo(0, nullptr);
    ICreateErrorInfo* creation = nullptr;
    if (FAILED(CreateErrorInfo(&creation))) return;
    const std::u16string_view source = error.source().empty() ? kOwnSource : error.source();
    creation->SetSource(const_cast<wchar_t*>(wide(source.data()))); // both end with a zero
    creation->SetDescription(const_cast<wchar_t*>(wide(error.description().c_str())));
    IErrorInfo* info = nullptr;
    if (SUCCEEDED(creation->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) {
        SetErrorInfo(0, info);
        info->Release();
    }
    creation->Release();
}

} // namespace cvlog::com
