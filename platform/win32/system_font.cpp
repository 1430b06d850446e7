#include "platform/win32/system_font.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr double kPointsAnInch = 72.0;
constexpr double kLargestPoints = 2000.0;

} // namespace

FontHandle makeFont(const base::Font& font, int dpi) {
    LOGFONTW wanted{};
    const double points = std::clamp(static_cast<double>(font.points), 0.0, kLargestPoints);
    wanted.lfHeight = -std::max(1L, std::lround(points * dpi / kPointsAnInch));
    wanted.lfWeight = std::clamp(font.weight, 0, 1000);
    wanted.lfItalic = font.italic ? TRUE : FALSE;
    wanted.lfUnderline = font.underline ? TRUE : FALSE;
    wanted.lfStrikeOut = font.strikethrough ? TRUE : FALSE;
    wanted.lfCharSet = static_cast<BYTE>(std::clamp(font.charset, 0, 255));
    const std::size_t length = std::min<std::size_t>(font.face.size(), LF_FACESIZE - 1);
    std::copy_n(font.face.begin(), length, wanted.lfFaceName);
    FontHandle made(CreateFontIndirectW(&wanted));
    if (!made) throw std::runtime_error("no font");
    return made;
}

} // namespace cvlog::platform::win32
