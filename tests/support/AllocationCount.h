#pragma once

#include <QtGlobal>

#include <functional>

namespace lucentra {

/// What a function takes from the heap, whatever library takes it and on which thread. Unlike time, it's the same on
/// any machine and under any load.
struct AllocationCount
{
    qint64 count = 0;
    qint64 bytes = 0;     ///< all together
    qint64 mostBytes = 0; ///< at once, beyond what was in use before
};

AllocationCount allocationsOf(const std::function<void()> &function);

} // namespace lucentra
