#pragma once

#include <windows.h>

#include <array>
#include <initializer_list>

namespace cvlog::tests {

/// Keys that this thread takes for held down, until the end of the scope.
class HeldKeys {
public:
    HeldKeys(std::initializer_list<int> keys) {
        GetKeyboardState(before_.data());
        auto now = before_;
        for (const int key : keys) now[static_cast<std::size_t>(key)] = 0x80;
        SetKeyboardState(now.data());
    }
    ~HeldKeys() { SetKeyboardState(before_.data()); }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

private:
    std::array<BYTE, 256> before_{};
};

} // namespace cvlog::tests
