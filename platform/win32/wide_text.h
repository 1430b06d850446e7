#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

// The system's text has the same code units as ours under another type. A text that ends at its first NUL
// cannot carry one; each function says what becomes of it.

namespace cvlog::platform::win32 {

/// The same code units, NULs kept; valid as long as the text.
inline std::wstring_view wideView(std::u16string_view text) noexcept {
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    return {reinterpret_cast<const wchar_t*>(text.data()), text.size()};
}

inline std::u16string fromWide(std::wstring_view text) { return {text.begin(), text.end()}; }

/// For showing: NULs become blanks.
inline std::wstring shownText(std::u16string_view text) {
    std::wstring wide(text.begin(), text.end());
    for (wchar_t& unit : wide)
        if (unit == L'\0') unit = L' ';
    return wide;
}

/// For naming things: throws std::invalid_argument for a text with a NUL, which would name something else.
inline std::wstring nameText(std::u16string_view text) {
    if (text.find(u'\0') != std::u16string_view::npos) throw std::invalid_argument("a name with a NUL");
    return {text.begin(), text.end()};
}

} // namespace cvlog::platform::win32
