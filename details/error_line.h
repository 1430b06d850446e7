#pragma once

#include <span>
#include <string_view>

namespace cvlog::details {

/// What one line of an errors file says: bytes of the system's code page. The bytes of all separators are below those
/// that can follow the first byte of a character, so a character is never torn.
struct ErrorLine {
    std::string_view typeName;
    std::string_view objectName;
    std::string_view severity;
    std::string_view code;
    std::string_view message; // on one line: control characters are blanks, none at the ends
    bool messageIsAscii = true;
};

/// Takes a line apart: six fields, of which the third and the fourth are dropped, then the message. Quotes open and
/// close anywhere in a field and group blanks. A line that does not begin with a quote is a message alone. The parts
/// lie in the line's own memory, which is changed. Takes time in proportion to the line.
ErrorLine ParseErrorLine(std::span<char> line) noexcept;

/// Without leading and trailing blanks; tabs stay.
std::span<char> TrimBlanks(std::span<char> text) noexcept;

} // namespace cvlog::details
