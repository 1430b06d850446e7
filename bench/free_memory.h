#pragma once

namespace cvlog::bench {

/// Gives the system what the heap holds free, where it can be given.
void giveBackFreeMemory();

} // namespace cvlog::bench
