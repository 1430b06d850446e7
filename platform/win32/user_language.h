#pragma once

#include "resources/string_table.h"

namespace cvlog::platform::win32 {

/// The language of the user's desktop, among those the component speaks.
resources::Language userLanguage() noexcept;

} // namespace cvlog::platform::win32
