#include "AllocationCount.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

#include <malloc.h>

// The C library's own functions, under the names by which they can still be reached once a program has its own
// `malloc`.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *pointer, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
void __libc_free(void *pointer);
}

namespace {

std::atomic<qint64> count = 0;
std::atomic<qint64> bytes = 0;
std::atomic<qint64> inUse = 0;
std::atomic<qint64> mostInUse = 0;

void *taken(void *pointer)
{
    if (!pointer)
        return nullptr;
    const auto size = qint64(malloc_usable_size(pointer));
    count.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(size, std::memory_order_relaxed);
    const qint64 now = inUse.fetch_add(size, std::memory_order_relaxed) + size;
    qint64 most = mostInUse.load(std::memory_order_relaxed);
    while (most < now && !mostInUse.compare_exchange_weak(most, now, std::memory_order_relaxed)) {
    }
    return pointer;
}

void given(void *pointer)
{
    if (pointer)
        inUse.fetch_sub(qint64(malloc_usable_size(pointer)), std::memory_order_relaxed);
}

} // namespace

extern "C" {

void *malloc(size_t size)
{
    return taken(__libc_malloc(size));
}

void *calloc(size_t number, size_t size)
{
    return taken(__libc_calloc(number, size));
}

void *realloc(void *pointer, size_t size)
{
    given(pointer);
    return taken(__libc_realloc(pointer, size));
}

void *memalign(size_t alignment, size_t size)
{
    return taken(__libc_memalign(alignment, size));
}

void *aligned_alloc(size_t alignment, size_t size)
{
    return taken(__libc_memalign(alignment, size));
}

int posix_memalign(void **pointer, size_t alignment, size_t size)
{
    *pointer = taken(__libc_memalign(alignment, size));
    return *pointer ? 0 : ENOMEM;
}

void free(void *pointer)
{
    given(pointer);
    __libc_free(pointer);
}

} // extern "C"

namespace lucentra {

AllocationCount allocationsOf(const std::function<void()> &function)
{
    const qint64 countBefore = count;
    const qint64 bytesBefore = bytes;
    const qint64 inUseBefore = inUse;
    mostInUse = inUseBefore;
    function();
    return {.count = count - countBefore, .bytes = bytes - bytesBefore, .mostBytes = mostInUse - inUseBefore};
}

} // namespace lucentra
