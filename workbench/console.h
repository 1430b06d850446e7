#pragma once

#include <windows.h>

#include <string>

namespace workbench {

/// Writes a line to STD_OUTPUT_HANDLE or STD_ERROR_HANDLE; without one, to the console the program was
/// started from.
void writeLine(DWORD stream, const std::wstring& line);

} // namespace workbench
