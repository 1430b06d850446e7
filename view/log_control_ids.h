#pragma once

#include <cstdint>

namespace cvlog::view {

// The dispatch ids that automation keeps for the properties every control has.
inline constexpr std::int32_t kBackColorId = -501;
inline constexpr std::int32_t kFontId = -512;
inline constexpr std::int32_t kForeColorId = -513;
inline constexpr std::int32_t kEnabledId = -514;
inline constexpr std::int32_t kHwndId = -515;
inline constexpr std::int32_t kRefreshId = -550;
inline constexpr std::int32_t kTextWidthId = 0x60030001;
inline constexpr std::int32_t kLogDblClickId = 0x60030002;
inline constexpr std::int32_t kControlsId = 0x68030000;

} // namespace cvlog::view
