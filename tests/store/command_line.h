#pragma once

#include <string>

namespace cvlog::store::testbed {

/// The first column of all rows as the command-line program of the database library prints it, one a line; "NULL" for
/// no value, "failed: ..." when it refuses. Fails the test when the program cannot be started.
std::string askCommandLine(const std::string& path, const std::string& sql);

} // namespace cvlog::store::testbed
