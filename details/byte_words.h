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

constexpr std::uint64_t BytesBeyondAscii(std::uint64_t word) noexcept { return word & kHighest; }

/// As many bytes as a number has bits.
inline constexpr std::size_t kBytesOfBlock = 64;

/// Where a byte is in a block, a bit for each place.
inline std::uint64_t PlacesInBlockByWords(const char* block, char byte) noexcept {
    constexpr std::uint64_t kHighestToTop = 0x0002'0408'1020'4081; // brings the highest bits side by side
    std::uint64_t places = 0;
    for (std::size_t at = kBytesOfBlock; at > 0; at -= kBytesOfWord) {
        const std::uint64_t equal = BytesEqual(WordAt({block, kBytesOfBlock}, at - kBytesOfWord), byte);
        places = places << kBytesOfWord | (equal * kHighestToTop) >> (kBytesOfBlock - kBytesOfWord);
    }
    return places;
}

#ifdef __SSE2__
/// Sixteen bytes at once, in a register of the processor.
inline constexpr std::size_t kBytesOfVector = 16;
using ByteVector [[gnu::vector_size(kBytesOfVector)]] = char;
inline ByteVector VectorAt(const char* bytes) noexcept {
    ByteVector vector;
    std::memcpy(&vector, bytes, sizeof vector);
    return vector;
}
/// The highest bit of each byte.
inline std::uint32_t HighestBits(ByteVector vector) noexcept {
    return static_cast<std::uint32_t>(__builtin_ia32_pmovmskb128(vector));
}
#endif

/// The same, in the quickest way that the processor is known to have.
inline std::uint64_t PlacesInBlock(const char* block, char byte) noexcept {
#ifdef __SSE2__
    std::uint64_t places = 0;
    for (std::size_t at = kBytesOfBlock; at > 0; at -= kBytesOfVector)
        places = places << kBytesOfVector | HighestBits(VectorAt(block + at - kBytesOfVector) == byte);
    return places;
#else
    return PlacesInBlockByWords(block, byte);
#endif
}

/// All bytes of a text of fewer than eight, some of them twice or in another order.
inline std::uint64_t ShortWord(std::string_view text) noexcept {
    constexpr std::size_t kHalf = kBytesOfWord / 2;
    if (text.size() >= kHalf) {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::memcpy(&first, text.data(), kHalf);
        std::memcpy(&last, text.data() + text.size() - kHalf, kHalf);
        return std::uint64_t{last} << 32 | first;
    }
    std::uint64_t word = kEachByte * ' ';
    for (const char byte : text) word = word << 8 | static_cast<unsigned char>(byte);
    return word;
}

/// Eight bytes or fewer: texts of one length that differ in these have different words.
inline std::uint64_t FirstWord(std::string_view text) noexcept {
    return text.size() < kBytesOfWord ? ShortWord(text) : WordAt(text, 0);
}

/// Quicker than calling for it where texts are short.
inline bool EqualBytes(std::string_view left, std::string_view right) noexcept {
    const std::size_t size = left.size();
    if (size != right.size()) return false;
    if (size < kBytesOfWord) return ShortWord(left) == ShortWord(right);
    if (size > 2 * kBytesOfWord) return left == right;
    return WordAt(left, 0) == WordAt(right, 0) &&
           WordAt(left, size - kBytesOfWord) == WordAt(right, size - kBytesOfWord);
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

/// Whether a text has a control character or a byte beyond ASCII.
inline bool AnyUnusualByWords(std::string_view text) noexcept {
    // Where it marks bytes too many there is one.
    return AnyByte(text, [](std::uint64_t word) { return (word | (word - kEachByte * ' ')) & kHighest; });
}

/// The same, in the quickest way that the processor is known to have.
inline bool AnyUnusual(std::string_view text) noexcept {
#ifdef __SSE2__
    constexpr std::size_t kStep = kBytesOfVector;
    if (text.size() < kStep) return AnyUnusualByWords(text);
    const auto below = [&text](std::size_t at) { // bytes beyond ASCII are negative
        return reinterpret_cast<ByteVector>(VectorAt(text.data() + at) < ' ');
    };
    ByteVector found = below(text.size() - kStep); // may be tested twice
    for (std::size_t at = 0; at + kStep <= text.size(); at += kStep) found |= below(at);
    return HighestBits(found) != 0;
#else
    return AnyUnusualByWords(text);
#endif
}

} // namespace cvlog::details
