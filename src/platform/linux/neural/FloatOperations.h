#pragma once

#include <vector>

namespace lucentra {

/// The words that an attention looks at.
struct AttendedRows
{
    const float *keys;   ///< `rows` times `width`
    const float *values; ///< likewise
    int rows;            ///< at least 1
    int width;
    int heads; ///< divides `width`
};

/// What a network does with floats between its products of integers. All vectors have `width` numbers and don't
/// overlap.
struct FloatOperations
{
    /// row += added, then normalized to mean 0 and variance 1, times `scale` plus `bias`.
    void (*addAndNormalize)(float *row, const float *added, const float *scale, const float *bias, int width);

    /// One word's attention. `weights` is room for a number per row.
    void (*attend)(const float *query, const AttendedRows &attended, float *weights, float *out);

    /// A step of a simple recurrent unit: cell = kept * cell + (1 - kept) * candidate, where `kept` is the sigmoid of
    /// `forget`. Then forget = max(cell, 0).
    void (*advanceCell)(float *cell, float *forget, const float *candidate, int width);
};

/// Those that this processor can run, the fastest first. All give the same numbers. Any thread.
const std::vector<FloatOperations> &floatOperations();

} // namespace lucentra
