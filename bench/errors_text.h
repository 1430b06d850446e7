#pragma once

#include <string>
#include <string_view>

namespace cvlog::bench {

/// The kind of message that is hidden where some are: one line in twenty.
inline constexpr char16_t kHiddenKind = u'I';

/// What an errors file of so many lines holds, in the manner of a compiler that went over a project: types, objects,
/// severities, codes and messages vary as they do there, and a line has 120 bytes. The same text for the same number.
std::string errorsText(int lines);

/// So many lines, all of the hidden kind.
std::string hiddenErrorsText(int lines);

// The project that the lines are about.
inline constexpr int kErrorsObjects = 300;
std::string errorsObject(int number);
/// "Header" or "Source".
std::string_view errorsType(int object);

} // namespace cvlog::bench
