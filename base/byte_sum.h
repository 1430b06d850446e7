#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace cvlog::base {

/// A number for each byte, e.g. the advances of the characters that a byte can tell.
using NumbersOfBytes = std::array<std::int64_t, 0x100>;

/// The numbers of all bytes of a text, added up. They may not add up to more than 63 bits hold.
std::int64_t sumOf(std::string_view bytes, const NumbersOfBytes& numbers) noexcept;

} // namespace cvlog::base
