#pragma once

#include "resources/string_entry.h"

namespace cvlog::resources {

/// The texts in Japanese.
extern const StringList kJapaneseStrings;

} // namespace cvlog::resources
