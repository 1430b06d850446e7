#pragma once

#include "automation/error.h"
#include "automation/value.h"

#include <windows.h>

#include <oleauto.h>

#include <string_view>

namespace cvlog::com {

inline std::u16string_view view(const wchar_t* text, std::size_t length) {
    return {reinterpret_cast<const char16_t*>(text), length};
}
/// A BSTR may be null, which is the empty text.
inline std::u16string_view view(BSTR text) { return view(text, SysStringLen(text)); }
inline const wchar_t* wide(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
/// A new BSTR; the caller frees it. Throws std::bad_alloc.
BSTR makeBstr(std::u16string_view text);

/// The value of a variant; by-reference ones are followed. Throws a type mismatch for what no value can hold, for a
/// reference to nowhere, and for references that go round in a circle.
automation::Value fromVariant(const VARIANT& variant);

/// Fills an empty or uninitialised variant.
void toVariant(const automation::Value& value, VARIANT* variant);

/// Writes a value to where a by-reference variant points, in the type that it has there.
void writeBack(const VARIANT& reference, const automation::Value& value);

/// The result of a method that ends with the error: never a success, whatever number a host gave its error.
HRESULT failureOf(const automation::AutomationError& error) noexcept;

/// Fills in everything; what was there is overwritten. Texts that cannot be had for lack of memory are left out.
void fillExcepInfo(const automation::AutomationError& error, EXCEPINFO* info) noexcept;
/// Makes the error the thread's error information.
void setErrorInfo(const automation::AutomationError& error) noexcept;

} // namespace cvlog::com
