#include "tests/store/command_line.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace cvlog::store::testbed {

namespace {

std::string quotedForTheShell(const std::string& text) {
    std::string quoted = "'";
    for (const char unit : text) quoted += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
    return quoted + "'";
}

} // namespace

std::string askCommandLine(const std::string& path, const std::string& sql) {
    const std::string command = "sqlite3 -batch -noheader -list -nullvalue NULL " + quotedForTheShell(path) +
                                " " + quotedForTheShell(sql) + " 2>&1 </dev/null";
    std::FILE* output = popen(command.c_str(), "r");
    if (!output) {
        ADD_FAILURE() << "The command-line program cannot be started";
        return {};
    }
    std::string text;
    char block[4096];
    while (const std::size_t count = std::fread(block, 1, sizeof block, output)) text.append(block, count);
    const bool succeeded = pclose(output) == 0;
    if (text.ends_with('\n')) text.pop_back();
    return succeeded ? text : "failed: " + text;
}

} // namespace cvlog::store::testbed
