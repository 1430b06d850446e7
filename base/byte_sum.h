#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace cvlog::base {

/// A number for each byte, e.g. the advances of the characters that a byte can tell.
using NumbersOfBytes = std::array<std::int64_t, 0x100>;

/// Adds up the numbers of all bytes of a text, which may not come to more than 63 bits hold. Takes two bytes in one step,
/// for which it makes itself a table of half a megabyte once a text is long enough.
class ByteSum {
public:
    ByteSum() noexcept : ofByte_{} {}
    explicit ByteSum(const NumbersOfBytes& numbers) noexcept : ofByte_(numbers) {}

    /// Of a single byte.
    std::int64_t ofByte(char16_t byte) const noexcept { return ofByte_[byte]; }
    /// Throws std::bad_alloc.
    std::int64_t of(std::string_view bytes) { return bytes.size() < kLong ? ofShort(bytes) : ofLong(bytes); }

private:
    static constexpr std::size_t kLong = 16; // a step or more
    std::int64_t ofShort(std::string_view bytes) const noexcept;
    std::int64_t ofLong(std::string_view bytes);
    void makePairs();

    NumbersOfBytes ofByte_;
    std::vector<std::int64_t> ofPair_; // by two bytes as they lie in memory; empty until it is needed
};

} // namespace cvlog::base
