#pragma once

namespace lucentra {

/// Returns freed memory to the system. The allocator keeps it in one heap per thread, so the program would otherwise
/// stay as large as each of its workers once was. Takes some milliseconds; any thread.
void giveBackFreeMemory();

} // namespace lucentra
