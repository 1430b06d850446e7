#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace cvlog::tests {

/// Counts what a library takes of the system and gives back, at the library's own imports: hooks, timers, menus, icons,
/// lists of icons, window classes and keys of the registry. It sees what comes after it, and is for a library that goes before it does; one at
/// a time.
class ImportSpy {
public:
    explicit ImportSpy(HMODULE library);
    ~ImportSpy();
    ImportSpy(const ImportSpy&) = delete;
    ImportSpy& operator=(const ImportSpy&) = delete;

    /// How many of each kind there are now, without those that went with their window.
    static std::map<std::string, int> held();
    /// How many of each kind there ever were.
    static std::map<std::string, int> taken();
};

} // namespace cvlog::tests
