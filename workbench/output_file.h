#pragma once

#include <string>

namespace workbench {

/// Writes a file with these lines as UTF-8, whole or not at all: it appears when it is complete. Throws Failure.
void writeFile(const std::wstring& path, const std::wstring& lines);

} // namespace workbench
