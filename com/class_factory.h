#pragma once

#include <windows.h>

#include <unknwn.h>

namespace cvlog::com {

HRESULT getClassObject(REFCLSID classId, REFIID interfaceId, void** object) noexcept;

} // namespace cvlog::com
