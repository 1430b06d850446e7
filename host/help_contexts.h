#pragma once

#include <cstdint>

// The contexts of the host's help file that the component asks for.

namespace cvlog::host {

inline constexpr std::int32_t kLogMenuHelp = 1001;
inline constexpr std::int32_t kHistoryListHelp = 1002;
inline constexpr std::int32_t kHistoryMenuHelp = 1003;

} // namespace cvlog::host
