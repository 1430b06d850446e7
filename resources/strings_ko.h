#pragma once

#include "resources/string_entry.h"

namespace cvlog::resources {

/// The texts in Korean.
extern const StringList kKoreanStrings;

} // namespace cvlog::resources
