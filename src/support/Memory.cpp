#include "Memory.h"

#include <malloc.h>

namespace lucentra {

void giveBackFreeMemory()
{
    ::malloc_trim(0);
}

} // namespace lucentra
