#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace lucentra {

/// Ends the fuzzer where a promise doesn't hold, so that it keeps the input.
inline void mustHold(bool holds, const char *promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

/// A copy of exactly the input's size, so that a byte read beyond it is noticed.
inline QByteArray bytesOf(const uint8_t *data, size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

} // namespace lucentra

/// What the fuzzing engine calls with every input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
