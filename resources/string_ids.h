#pragma once

#include <cstddef>

namespace cvlog::resources {

/// The ids form two runs without gaps: captions, then messages.
inline constexpr int kFirstCaptionId = 100;
inline constexpr int kLastCaptionId = 152;
inline constexpr int kFirstMessageId = 500;
inline constexpr int kLastMessageId = 516;

inline constexpr std::size_t kCaptionCount = kLastCaptionId - kFirstCaptionId + 1;
inline constexpr std::size_t kStringCount = kCaptionCount + (kLastMessageId - kFirstMessageId + 1);

/// True for the ids of both runs.
constexpr bool isStringId(int id) {
    return (id >= kFirstCaptionId && id <= kLastCaptionId) || (id >= kFirstMessageId && id <= kLastMessageId);
}

/// Position of an id in a StringList; `id` must be a string id.
constexpr std::size_t stringIndex(int id) {
    if (id <= kLastCaptionId) return static_cast<std::size_t>(id - kFirstCaptionId);
    return kCaptionCount + static_cast<std::size_t>(id - kFirstMessageId);
}

} // namespace cvlog::resources
