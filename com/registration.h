#pragma once

#include <windows.h>

namespace cvlog::com {

/// Writes the machine-wide registration of both classes and the type library, with this module's path.
HRESULT registerServer() noexcept;

/// Removes what registerServer writes.
HRESULT unregisterServer() noexcept;

} // namespace cvlog::com
