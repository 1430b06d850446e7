#pragma once

#include "core/globals.h"

#include <cstdint>

namespace cvlog::core {

/// Starts a series: forgets the codes merged so far and, unless rows are kept, empties every list.
void SeriesStart(Globals& globals);

/// Ends the series and tells the user its combined outcome when the log is not in view. The state is cleared before
/// the box opens: a series that starts while the box is open must not be wiped when the box closes.
void SeriesFinish(Globals& globals);

/// The host's wording of a return code; the outcome message while there is no host.
std::u16string ReturnCodeText(const Globals& globals, std::int32_t code);

} // namespace cvlog::core
