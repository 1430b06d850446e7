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

/// The value of a variant; by-reference ones are followed. Throws a type mismatch for what no value can hold.
automation::Value fromVariant(const VARIANT& variant);

/// Fills an empty or uninitialised variant.
void toVariant(const automation::Value& value, VARIANT* variant);

/// Writes a value to where a by-reference variant points, in the type that it has there.
void writeBack(const VARIANT& reference, const automation::Value& value);

void fillExcepInfo(const automation::AutomationError& error, EXCEPINFO* info);
void setErrorInfo(const automation::AutomationError& error) noexcept;

} // namespace cvlog::com
