#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Text is UTF-16, counted by length: NULs and lone surrogates are ordinary code units and are kept.

namespace cvlog::base {

/// One UTF-16 code unit in the form used to compare keys, tags and command words: simple upper case, one unit to one
/// unit, independent of any language.
char16_t foldCase(char16_t unit) noexcept;

/// Equal code unit by code unit after case folding. Never linguistic: a linguistic comparison skips characters, so
/// two different keys could collide.
bool equalsIgnoringCase(std::u16string_view left, std::u16string_view right) noexcept;

/// Equal code unit by code unit. Quicker than what the library does to find out which of two is the lesser.
bool isSame(std::u16string_view left, std::u16string_view right) noexcept;

/// The text in its folded form, for use as a map key.
std::u16string folded(std::u16string_view text);

/// Without leading and trailing U+0020. Other white space is kept.
std::u16string_view trimBlanks(std::u16string_view text) noexcept;

/// The number in decimal, "-" in front when negative.
std::u16string decimal(std::int64_t number);

/// The text with the first occurrence of `what` replaced.
std::u16string replaceFirst(std::u16string_view text, std::u16string_view what, std::u16string_view by);

/// UTF-8 of the text. A lone surrogate becomes its own three-byte sequence, so that the way back is exact.
std::string toUtf8(std::u16string_view text);
/// The same into `out`, whose memory is used again.
void toUtf8(std::u16string_view text, std::string& out);

bool isAscii(std::string_view bytes) noexcept;
bool isAscii(std::u16string_view text) noexcept;

/// ASCII bytes as UTF-16, into memory for as many code units. Answers where they end.
char16_t* widenAscii(std::string_view bytes, char16_t* to) noexcept;
/// The way back, for text that is ASCII.
char* narrowAscii(std::u16string_view text, char* to) noexcept;

/// UTF-16 of UTF-8 text, lone surrogates in three-byte form included. A malformed byte becomes U+FFFD.
std::u16string fromUtf8(std::string_view text);
/// The same into `out`, whose memory is used again.
void fromUtf8(std::string_view text, std::u16string& out, std::size_t begin = 0);

} // namespace cvlog::base
