#include "Memory.h"

#include <malloc.h>

namespace lucentra {

void giveBackLargeBlocks()
{
    // Otherwise both limits grow with the blocks that are freed, and pictures leave holes in the heap.
    constexpr int large = 1 << 20;
    ::mallopt(M_MMAP_THRESHOLD, large);
    ::mallopt(M_TRIM_THRESHOLD, 4 * large);
}

void giveBackFreeMemory()
{
    ::malloc_trim(0);
}

} // namespace lucentra
