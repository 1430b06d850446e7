#pragma once

#include <string>

namespace workbench {

/// Creates the project's log database when there is no such file yet; throws Failure when it cannot. The
/// table LogInfo has the columns that a host owes the log; the log adds its own.
void createDatabaseIfMissing(const std::wstring& path);

} // namespace workbench
