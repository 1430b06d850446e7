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

/// Like BytesEqual() up to the first byte that is meant; of those behind it nothing is said.
constexpr std::uint64_t FirstByteEqual(std::uint64_t word, char byte) noexcept {
    const std::uint64_t different = word ^ (kEachByte * static_cast<unsigned char>(byte));
    return (different - kEachByte) & ~different & kHighest;
}

/// A text of fewer bytes; behind its end are blanks, its order is another one.
inline std::uint64_t ShortWord(std::string_view text) noexcept {
    std::uint64_t word = kEachByte * ' ';
    for (const char byte : text) word = word << 8 | static_cast<unsigned char>(byte);
    return word;
}

/// Whether a test finds any byte of a text. It must not find blanks.
template <class Test>
bool AnyByte(std::string_view text, Test&& test) noexcept {
    if (text.size() < kBytesOfWord) return test(ShortWord(text)) != 0;
    std::uint64_t found = test(WordAt(text, text.size() - kBytesOfWord)); // may be tested twice
    for (std::size_t at = 0; at + kBytesOfWord <= text.size(); at += kBytesOfWord)
        found |= test(WordAt(text, at));
    return found != 0;
}

} // namespace cvlog::details
