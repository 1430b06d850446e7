#pragma once

#include <windows.h>

#include <oaidl.h>

namespace cvlog::com {

/// The type description of a class or an interface, from the library embedded in this module.
HRESULT typeInfoOf(REFGUID id, ITypeInfo** info) noexcept;

} // namespace cvlog::com
