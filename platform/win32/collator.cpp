#include "platform/win32/collator.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/windows_headers.h"

#include <array>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr DWORD kFlags = LCMAP_SORTKEY | NORM_IGNORECASE;

/// The bytes written to `out`, 0 when they do not fit or the system refuses. Sizes are in bytes for sort
/// keys.
int mapKey(std::wstring_view text, char* out, int size) noexcept {
    return LCMapStringEx(LOCALE_NAME_USER_DEFAULT, kFlags, text.data(), static_cast<int>(text.size()),
                         reinterpret_cast<LPWSTR>(out), size, nullptr, nullptr, 0);
}

} // namespace

void Collator::appendSortKey(std::u16string_view text, std::string& keys) {
    const std::wstring_view wide = wideView(text.substr(0, kLongestCompared));
    if (wide.empty()) return;
    const std::size_t begin = keys.size();
    std::array<char, 512> shortKey;
    if (const int length = mapKey(wide, shortKey.data(), static_cast<int>(shortKey.size())); length > 0) {
        keys.append(shortKey.data(), static_cast<std::size_t>(length));
    } else {
        const int needed = mapKey(wide, nullptr, 0);
        if (needed <= 0) throw std::runtime_error("the text has no sort key");
        keys.resize(begin + static_cast<std::size_t>(needed));
        if (mapKey(wide, keys.data() + begin, needed) <= 0)
            throw std::runtime_error("the text has no sort key");
    }
    while (keys.size() > begin &&
           keys.back() == '\0') // ends a key, and would come before what continues a shorter one
        keys.pop_back();
}

} // namespace cvlog::platform::win32
