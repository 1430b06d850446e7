#include "bench/free_memory.h"

#include <malloc.h>

namespace cvlog::bench {

void giveBackFreeMemory() { _heapmin(); }

} // namespace cvlog::bench
