#include "workbench/variant.h"

#include "workbench/failure.h"

namespace workbench {

Variant::Variant(long number) : Variant() {
    raw_.vt = VT_I4;
    raw_.lVal = number;
}

Variant::Variant(double number) : Variant() {
    raw_.vt = VT_R8;
    raw_.dblVal = number;
}

Variant::Variant(const std::wstring& text) : Variant() {
    raw_.vt = VT_BSTR;
    raw_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!raw_.bstrVal) {
        throw Failure(L"Out of memory", E_OUTOFMEMORY);
    }
}

Variant::Variant(IDispatch* object) : Variant() {
    raw_.vt = VT_DISPATCH;
    raw_.pdispVal = object;
    if (object) {
        object->AddRef();
    }
}

Variant::Variant(const VARIANT& value) : Variant() {
    check(VariantCopy(&raw_, const_cast<VARIANT*>(&value)), L"Copying a value");
}

Variant& Variant::operator=(Variant other) noexcept {
    std::swap(raw_, other.raw_);
    return *this;
}

Variant Variant::byReference(IDispatch*& object) {
    Variant reference;
    reference.raw_.vt = VT_DISPATCH | VT_BYREF;
    reference.raw_.ppdispVal = &object;
    return reference;
}

Variant Variant::byReference(double& number) {
    Variant reference;
    reference.raw_.vt = VT_R8 | VT_BYREF;
    reference.raw_.pdblVal = &number;
    return reference;
}

bool Variant::isEmptyResult() const {
    return raw_.vt == VT_EMPTY || raw_.vt == VT_NULL || (raw_.vt == VT_DISPATCH && !raw_.pdispVal) ||
           (raw_.vt == VT_UNKNOWN && !raw_.punkVal);
}

std::wstring Variant::text() const {
    const Variant copy = converted(VT_BSTR);
    return std::wstring(copy.raw_.bstrVal ? copy.raw_.bstrVal : L"", SysStringLen(copy.raw_.bstrVal));
}

long Variant::integer() const { return converted(VT_I4).raw_.lVal; }

double Variant::number() const { return converted(VT_R8).raw_.dblVal; }

bool Variant::boolean() const { return converted(VT_BOOL).raw_.boolVal != VARIANT_FALSE; }

ComPtr<IDispatch> Variant::object() const {
    if (isEmptyResult()) {
        return nullptr;
    }
    return converted(VT_DISPATCH).raw_.pdispVal;
}

VARIANT* Variant::receive() {
    VariantClear(&raw_);
    return &raw_;
}

VARIANT Variant::detach() noexcept {
    const VARIANT value = raw_;
    VariantInit(&raw_);
    return value;
}

Variant Variant::converted(VARTYPE type) const {
    Variant copy;
    check(VariantChangeTypeEx(&copy.raw_, const_cast<VARIANT*>(&raw_), LOCALE_INVARIANT, 0, type),
          L"Converting a value");
    return copy;
}

} // namespace workbench
