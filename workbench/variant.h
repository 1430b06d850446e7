#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include <concepts>
#include <string>

namespace workbench {

using Microsoft::WRL::ComPtr;

/// A VARIANT that owns what it holds. The readers convert as automation does and throw Failure when they
/// cannot.
class Variant {
public:
    Variant() { VariantInit(&raw_); }
    Variant(long number);
    Variant(int number) : Variant(static_cast<long>(number)) {}
    Variant(double number);
    Variant(std::same_as<bool> auto truth) : Variant() {
        raw_.vt = VT_BOOL;
        raw_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Variant(const std::wstring& text);
    Variant(const wchar_t* text) : Variant(std::wstring(text)) {}
    Variant(IDispatch* object);
    template <class T>
    Variant(const ComPtr<T>& object) : Variant(static_cast<IDispatch*>(object.Get())) {}
    explicit Variant(const VARIANT& value);

    Variant(const Variant& other) : Variant(other.raw_) {}
    Variant(Variant&& other) noexcept : raw_(other.detach()) {}
    Variant& operator=(Variant other) noexcept;
    ~Variant() { VariantClear(&raw_); }

    /// An object argument that the callee may exchange; `object` must outlive the call.
    static Variant byReference(IDispatch*& object);
    /// The number in `number`, which must outlive the call, as an argument that the callee may change.
    static Variant byReference(double& number);

    /// None, Empty or Null: how a look-up says that there is nothing.
    bool isEmptyResult() const;
    std::wstring text() const;
    long integer() const;
    double number() const;
    bool boolean() const;
    /// The object, or null for an empty result.
    ComPtr<IDispatch> object() const;

    const VARIANT& raw() const { return raw_; }
    /// The place for a call to store its result.
    VARIANT* receive();
    /// Hands what is held to the caller.
    VARIANT detach() noexcept;

private:
    Variant converted(VARTYPE type) const;

    VARIANT raw_;
};

} // namespace workbench
