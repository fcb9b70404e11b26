#pragma once

namespace lucentra {

/// Gives the system back what has been freed: the allocator keeps it, spread over one heap a thread, so that the
/// program would seem to grow by what each of its workers has once needed. Takes some milliseconds; any thread.
void giveBackFreeMemory();

} // namespace lucentra
