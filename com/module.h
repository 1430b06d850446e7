#pragma once

#include <windows.h>

namespace cvlog::com {

/// Counts what keeps the library loaded: objects and server locks, of all threads.
class ModuleLock {
public:
    ModuleLock() noexcept;
    ~ModuleLock();
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;

    static bool isFree() noexcept;
    static void add(LONG count) noexcept;
};

/// The module this code is in.
HMODULE thisModule() noexcept;

} // namespace cvlog::com
