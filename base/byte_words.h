#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Eight bytes of a text at once, as one number; the first is the lowest. Tests answer with the highest bit of each byte
// that is meant.

namespace cvlog::base {

static_assert(std::endian::native == std::endian::little);

inline constexpr std::size_t kBytesOfWord = sizeof(std::uint64_t);
inline constexpr std::uint64_t kEachByte = 0x0101'0101'0101'0101U;
inline constexpr std::uint64_t kHighest = kEachByte * 0x80;

inline std::uint64_t wholeWordAt(const char* bytes) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// The bytes from a place on; behind the end of the text are blanks.
inline std::uint64_t wordAt(std::string_view text, std::size_t at) noexcept {
    if (at + kBytesOfWord <= text.size()) return wholeWordAt(text.data() + at);
    std::uint64_t word = kEachByte * ' ';
    std::memcpy(&word, text.data() + at, text.size() - at);
    return word;
}

constexpr std::uint64_t bytesEqual(std::uint64_t word, char byte) noexcept {
    const std::uint64_t different = word ^ (kEachByte * static_cast<unsigned char>(byte));
    return ~(((different & ~kHighest) + ~kHighest) | different) & kHighest;
}

constexpr std::uint64_t bytesBeyondAscii(std::uint64_t word) noexcept { return word & kHighest; }

/// As many bytes as a number has bits.
inline constexpr std::size_t kBytesOfBlock = 64;

/// Where a byte is in a block, a bit for each place.
inline std::uint64_t placesInBlockByWords(const char* block, char byte) noexcept {
    constexpr std::uint64_t kHighestToTop = 0x0002'0408'1020'4081; // brings the highest bits side by side
    std::uint64_t places = 0;
    for (std::size_t at = kBytesOfBlock; at > 0; at -= kBytesOfWord) {
        const std::uint64_t equal = bytesEqual(wholeWordAt(block + at - kBytesOfWord), byte);
        places = places << kBytesOfWord | (equal * kHighestToTop) >> (kBytesOfBlock - kBytesOfWord);
    }
    return places;
}

#ifdef __SSE2__
/// Sixteen bytes at once, in a register of the processor.
inline constexpr std::size_t kBytesOfVector = 16;
using ByteVector [[gnu::vector_size(kBytesOfVector)]] = char;
inline ByteVector vectorAt(const char* bytes) noexcept {
    ByteVector vector;
    std::memcpy(&vector, bytes, sizeof vector);
    return vector;
}
/// The highest bit of each byte.
inline std::uint32_t highestBits(ByteVector vector) noexcept {
    return static_cast<std::uint32_t>(__builtin_ia32_pmovmskb128(vector));
}
#endif

/// The same, in the quickest way that the processor is known to have.
inline std::uint64_t placesInBlock(const char* block, char byte) noexcept {
#ifdef __SSE2__
    std::uint64_t places = 0;
    for (std::size_t at = kBytesOfBlock; at > 0; at -= kBytesOfVector)
        places = places << kBytesOfVector | highestBits(vectorAt(block + at - kBytesOfVector) == byte);
    return places;
#else
    return placesInBlockByWords(block, byte);
#endif
}

/// All bytes of a text of fewer than eight, some of them twice or in another order.
inline std::uint64_t shortWord(std::string_view text) noexcept {
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
inline std::uint64_t firstWord(std::string_view text) noexcept {
    return text.size() < kBytesOfWord ? shortWord(text) : wordAt(text, 0);
}

/// Quicker than calling for it where texts are short.
inline bool equalBytes(std::string_view left, std::string_view right) noexcept {
    const std::size_t size = left.size();
    if (size != right.size()) return false;
    if (size < kBytesOfWord) return shortWord(left) == shortWord(right);
    if (size > 2 * kBytesOfWord) return left == right;
    return wordAt(left, 0) == wordAt(right, 0) &&
           wordAt(left, size - kBytesOfWord) == wordAt(right, size - kBytesOfWord);
}

/// Whether a test finds any byte of a text. It must not find blanks.
template <class Test>
bool anyByte(std::string_view text, Test&& test) noexcept {
    if (text.size() < kBytesOfWord) return test(shortWord(text)) != 0;
    std::uint64_t found = test(wholeWordAt(text.data() + text.size() - kBytesOfWord)); // may be tested twice
    for (std::size_t at = 0; at + kBytesOfWord <= text.size(); at += kBytesOfWord)
        found |= test(wholeWordAt(text.data() + at));
    return found != 0;
}

/// Whether a text has a control character or a byte beyond ASCII.
inline bool anyUnusualByWords(std::string_view text) noexcept {
    // Where it marks bytes too many there is one.
    return anyByte(text, [](std::uint64_t word) { return (word | (word - kEachByte * ' ')) & kHighest; });
}

/// The same, in the quickest way that the processor is known to have.
inline bool anyUnusual(std::string_view text) noexcept {
#ifdef __SSE2__
    if (text.size() < kBytesOfVector) return anyUnusualByWords(text);
    ByteVector found{};
    const auto test = [&](std::size_t at) { // bytes beyond ASCII are negative
        found |= reinterpret_cast<ByteVector>(vectorAt(text.data() + at) < ' ');
    };
    // Whole blocks, some bytes of them twice: how many vectors a text has would be foretold badly.
    const std::size_t last = text.size() - kBytesOfVector;
    if (text.size() < kBytesOfBlock) {
        for (std::size_t at = 0; at < kBytesOfBlock; at += kBytesOfVector) test(std::min(at, last));
        return highestBits(found) != 0;
    }
    const auto testBlock = [&](std::size_t begin) {
        for (std::size_t at = 0; at < kBytesOfBlock; at += kBytesOfVector) test(begin + at);
    };
    for (std::size_t begin = 0; begin + kBytesOfBlock <= text.size(); begin += kBytesOfBlock)
        testBlock(begin);
    testBlock(text.size() - kBytesOfBlock);
    return highestBits(found) != 0;
#else
    return anyUnusualByWords(text);
#endif
}

} // namespace cvlog::base
