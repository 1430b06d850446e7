#pragma once

#include "automation/value.h"

#include <cstdint>

namespace cvlog::view {

// Colours pass automation as signed numbers of the same 32 bits.

inline std::int32_t toBits(std::uint32_t colour) { return static_cast<std::int32_t>(colour); }

/// `value` is already of the type that colours have there.
inline std::uint32_t fromBits(const automation::Value& value) {
    return static_cast<std::uint32_t>(value.as<std::int32_t>());
}

} // namespace cvlog::view
