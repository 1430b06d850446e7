#include "bench/free_memory.h"

#include <malloc.h>

namespace cvlog::bench {

void giveBackFreeMemory() { malloc_trim(0); }

} // namespace cvlog::bench
