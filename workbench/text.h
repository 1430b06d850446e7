#pragma once

#include <string>
#include <string_view>

namespace workbench {

/// Text as UTF-8. A lone surrogate becomes U+FFFD.
std::string toUtf8(std::wstring_view text);

/// UTF-8 as text; throws Failure when `bytes` are not UTF-8.
std::wstring fromUtf8(std::string_view bytes);

/// Whether two names are the same but for the case of letters.
bool sameName(std::wstring_view left, std::wstring_view right);

/// A decimal int32 with an optional sign and nothing around it; false, and `number` untouched, for anything
/// else.
bool parseNumber(std::wstring_view text, long& number);

} // namespace workbench
