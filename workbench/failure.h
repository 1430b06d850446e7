#pragma once

#include <windows.h>

#include <exception>
#include <string>

namespace workbench {

/// The one exception of the workbench: a sentence for the user, and the code that a COM caller gets to see.
class Failure : public std::exception {
public:
    explicit Failure(std::wstring message, HRESULT code = E_FAIL)
        : message_(std::move(message)), code_(code) {}

    const std::wstring& message() const { return message_; }
    HRESULT code() const { return code_; }
    const char* what() const noexcept override { return "workbench::Failure"; }

private:
    std::wstring message_;
    HRESULT code_;
};

/// Throws a Failure that says what was being done when `result` is an error code.
inline void check(HRESULT result, const wchar_t* doing) {
    if (FAILED(result)) {
        wchar_t code[16];
        wsprintfW(code, L" (0x%08lX)", result);
        throw Failure(std::wstring(doing) + L" failed" + code, result);
    }
}

} // namespace workbench
