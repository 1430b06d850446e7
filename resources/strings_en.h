#pragma once

#include "resources/string_entry.h"

namespace cvlog::resources {

/// The texts in English.
extern const StringList kEnglishStrings;

} // namespace cvlog::resources
