#pragma once

#include "ports/message_boxes.h"
#include "resources/string_table.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cvlog::core {

/// The key of the icon that stands for a method's return code. -2, a timeout, is "Bad" although its message speaks of
/// cancellation; 16 is a second code for a cancellation by the user.
std::u16string_view ResultIconKey(std::int32_t code) noexcept;

/// What a return code means, in the user's language.
std::u16string OutcomeMessage(resources::Language language, std::int32_t code);

/// The icon of the box that reports a series with this code.
ports::BoxIcon OutcomeBoxIcon(std::int32_t code) noexcept;

/// The text on one line: every character below U+0020 becomes a blank, then blanks at the ends are dropped. Nothing
/// else changes: other white space stays, and runs of blanks are not joined.
std::u16string CleanMessage(std::u16string_view text);
/// The same in the text's own memory; what it answers is a part of it.
std::u16string_view CleanMessageInPlace(std::u16string& text) noexcept;
std::string_view CleanMessageInPlace(std::string& ascii) noexcept;

} // namespace cvlog::core
