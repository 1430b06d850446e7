#include "workbench/text.h"

#include "workbench/failure.h"

namespace workbench {

std::string toUtf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr),
                      '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()),
                        nullptr, nullptr);
    return bytes;
}

std::wstring fromUtf8(std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    const int length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), length, nullptr, 0);
    if (needed == 0) {
        throw Failure(L"The text is not UTF-8");
    }
    std::wstring text(needed, L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), length, text.data(), needed);
    return text;
}

bool sameName(std::wstring_view left, std::wstring_view right) {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

bool parseNumber(std::wstring_view text, long& number) {
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+')) {
        text.remove_prefix(1);
    }
    if (text.empty() || text.size() > 10) {
        return false;
    }
    long long value = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9') {
            return false;
        }
        value = value * 10 + (digit - L'0');
    }
    value = negative ? -value : value;
    if (value < LONG_MIN || value > LONG_MAX) {
        return false;
    }
    number = static_cast<long>(value);
    return true;
}

} // namespace workbench
