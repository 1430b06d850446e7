#pragma once

#include "tests/windows/com_test.h"

#include <string>

// Scripts as clients, run by the system's own script host.

namespace cvlog::tests {

/// How a script ends in which everything held (`WScript.Quit 7`): the script host ends with 0 also on an error.
inline constexpr DWORD kScriptHeld = 7;

/// The machine-wide registration, for clients that cannot carry a manifest.
class ScriptRegistration {
public:
    ScriptRegistration();
    ~ScriptRegistration();
    ScriptRegistration(const ScriptRegistration&) = delete;
    ScriptRegistration& operator=(const ScriptRegistration&) = delete;
    DWORD code() const { return code_; }

private:
    DWORD code_;
};

/// The beginning of a script: `Workspace` with a method "verify" that is unknown, and an object for any identifier;
/// `Check Condition, ExitCode`; the variables Log and Rows.
std::string scriptedHost();

/// Runs a script with the folder as its argument. What it ends with.
DWORD runScript(const ProjectFolder& folder, const std::string& script);

} // namespace cvlog::tests
