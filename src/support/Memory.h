#pragma once

namespace lucentra {

/// Makes the allocator return large blocks, such as pictures, to the system as soon as they are freed. Call it before
/// other threads run.
void giveBackLargeBlocks();

/// Returns freed memory to the system. The allocator keeps it in one heap per thread, so the program would otherwise
/// stay as large as each of its workers once was. Takes some milliseconds; any thread.
void giveBackFreeMemory();

} // namespace lucentra
