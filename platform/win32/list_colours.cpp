#include "platform/win32/list_colours.h"

namespace cvlog::platform::win32 {

namespace {

constexpr std::uint32_t kSystemColour = 0x8000'0000U;

/// Colours are system colours by index, or plain blue-green-red.
COLORREF colourOf(std::uint32_t colour) noexcept {
    return colour & kSystemColour ? GetSysColor(static_cast<int>(colour & 0xFFU)) : colour & 0xFF'FFFFU;
}

RowColours systemPair(int back, int text) noexcept { return {GetSysColor(back), GetSysColor(text)}; }

} // namespace

RowColours plainColours(const widgets::ListView& list) noexcept {
    if (!list.enabled()) return systemPair(COLOR_BTNFACE, COLOR_GRAYTEXT);
    return {colourOf(list.colours().back), colourOf(list.colours().fore)};
}

RowColours selectedColours(const widgets::ListView& list, bool focused) noexcept {
    if (!list.enabled()) return systemPair(COLOR_GRAYTEXT, COLOR_BTNFACE);
    const RowColours highlight = systemPair(COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT);
    const RowColours quiet = systemPair(COLOR_BTNFACE, COLOR_BTNTEXT);
    // With high contrast the quiet colour can be that of the list: the selection must be seen all the same.
    return focused || quiet.back == plainColours(list).back ? highlight : quiet;
}

} // namespace cvlog::platform::win32
