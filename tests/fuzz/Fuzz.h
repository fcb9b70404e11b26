#pragma once

#include <QByteArray>
#include <QFile>

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

/// Makes the input the content of a file.
inline void writeInput(const QString &path, const uint8_t *data, size_t size)
{
    QFile file(path);
    const QByteArray content = bytesOf(data, size);
    mustHold(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "the fuzzer's own file");
}

} // namespace lucentra

/// What the fuzzing engine calls with every input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
