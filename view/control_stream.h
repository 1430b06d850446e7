#pragma once

#include "ports/fonts.h"
#include "view/control_properties.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

// The control's properties as bytes, for containers that store streams. Numbers are little-endian:
//   4  mark            4  length of what follows the 12 bytes of the head
//   2  version, 1      2  which values follow: 1 BackColor, 2 ForeColor, 4 Enabled, 8 Font
//   4  BackColor       4  ForeColor       1  Enabled, 0 or 1
//   font: 2 length of the name, its UTF-16 units, 4 size in points (a single-precision number), 2 weight,
//         1 style: 1 italic, 2 underlined, 4 struck through; 1 character set
// What has its default is not stored. A font is stored by its values, not as the object it came in.

namespace cvlog::view {

/// Fills the whole buffer with the next bytes, or throws.
using ByteSource = std::function<void(std::span<std::uint8_t>)>;

/// Fails when the font does not answer.
std::vector<std::uint8_t> encodeProperties(const ControlProperties& properties);

/// Reads exactly what was encoded. Anything else throws AutomationError.
ControlProperties decodeProperties(const ByteSource& source, ports::Fonts& fonts);

} // namespace cvlog::view
