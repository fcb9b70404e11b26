#pragma once

#include <cstdint>
#include <vector>

namespace lucentra {

/// Products of 8-bit matrices, exact in every step. A kernel per kind of processor.
struct Int8Kernel
{
    const char *name;

    /// out[i] = values[i] * multiplier, rounded to the nearest integer (halves to even), at most 127 and at least -127.
    void (*quantize)(const float *values, int count, float multiplier, std::int8_t *out);

    struct Factors
    {
        const std::int8_t *left; ///< `rows` times `depth`, each from -127 to 127
        int rows;
        const float *scales;            ///< one per row of the left matrix
        const std::int8_t *right;       ///< a row of `depth` per column of the result
        const std::uint32_t *rightRows; ///< which rows of `right`; null means the first `columns`
        int columns;
        int depth;         ///< at most 65536, so that no sum overflows
        const float *bias; ///< one per column; may be null
    };
    /// out[r * columns + c] = (row r of the left · row c of the right) * scales[r] + bias[c]
    void (*multiply)(const Factors &factors, float *out);
};

/// Those that this processor can run, the fastest first. The last is plain code for every processor. Any thread.
const std::vector<Int8Kernel> &int8Kernels();

} // namespace lucentra
