#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Eight bytes of a text at once, as one number; the first is the lowest. Tests answer with the highest bit of each byte
// that is meant.

namespace cvlog::details {

static_assert(std::endian::native == std::endian::little);

inline constexpr std::size_t kBytesOfWord = sizeof(std::uint64_t);
inline constexpr std::uint64_t kEachByte = 0x0101'0101'0101'0101U;
inline constexpr std::uint64_t kHighest = kEachByte * 0x80;

/// The bytes from a place on; behind the end of the text are blanks.
inline std::uint64_t WordAt(std::string_view text, std::size_t at) noexcept {
    std::uint64_t word = kEachByte * ' ';
    if (at + kBytesOfWord <= text.size())
        std::memcpy(&word, text.data() + at, kBytesOfWord);
    else
        std::memcpy(&word, text.data() + at, text.size() - at);
    return word;
}

constexpr std::uint64_t BytesEqual(std::uint64_t word, char byte) noexcept {
    const std::uint64_t different = word ^ (kEachByte * static_cast<unsigned char>(byte));
    return ~(((different & ~kHighest) + ~kHighest) | different) & kHighest;
}

constexpr std::uint64_t ControlBytes(std::uint64_t word) noexcept {
    return ~(((word & ~kHighest) + kEachByte * (0x80 - ' ')) | word) & kHighest;
}

constexpr std::uint64_t BytesBeyondAscii(std::uint64_t word) noexcept { return word & kHighest; }

/// Whether a test finds any byte of a text. It must not find blanks.
template <class Test>
bool AnyByte(std::string_view text, Test&& test) noexcept {
    std::uint64_t found = 0;
    std::size_t at = 0;
    for (; at + kBytesOfWord <= text.size(); at += kBytesOfWord) found |= test(WordAt(text, at));
    if (at < text.size())
        found |= test(WordAt(text, text.size() < kBytesOfWord ? 0 : text.size() - kBytesOfWord));
    return found != 0;
}

} // namespace cvlog::details
