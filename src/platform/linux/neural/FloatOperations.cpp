#include "FloatOperations.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace lucentra {

namespace {

constexpr int lanes = 8;

/// Sums in several parts, which the compiler computes at once.
template <typename Number>
struct Sum
{
    Number parts[lanes]{};

    [[gnu::always_inline]] float total() const
    {
        return float(((parts[0] + parts[1]) + (parts[2] + parts[3])) + ((parts[4] + parts[5]) + (parts[6] + parts[7])));
    }
};

[[gnu::always_inline]] inline float sum(const float *values, int count)
{
    Sum<float> sum;
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        for (int p = 0; p < lanes; ++p)
            sum.parts[p] += values[i + p];
    }
    for (; i < count; ++i)
        sum.parts[0] += values[i];
    return sum.total();
}

/// In double precision: the exponential function makes errors of an attention's weights larger, and one integer that is
/// rounded to the other side changes the words that follow.
[[gnu::always_inline]] inline float dot(const float *left, const float *right, int count)
{
    Sum<double> sum;
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        for (int p = 0; p < lanes; ++p)
            sum.parts[p] += double(left[i + p]) * double(right[i + p]);
    }
    for (; i < count; ++i)
        sum.parts[0] += double(left[i]) * double(right[i]);
    return sum.total();
}

/// The exponential function of a number that isn't positive, to the last digit or two, and at least e^-87. Unlike the
/// library's, the compiler computes it for several numbers at once.
[[gnu::always_inline]] inline float power(float value)
{
    // e^value is 2^n e^r, where r is between -ln(2)/2 and ln(2)/2: a few terms of its series are enough.
    constexpr float ln2Start = 0.693359375F; // few digits, so that n times it is exact
    constexpr float ln2Rest = -2.12194440e-4F;
    constexpr float rounder = 12582912;           // 1.5 * 2^23: the sum has no digits after the point
    const float limited = std::max(-87.F, value); // also if it is not a number
    const float n = (limited * 1.44269504F + rounder) - rounder;
    const float r = (limited - n * ln2Start) - n * ln2Rest;
    const float series =
        1 +
        r * (1 + r * (1.F / 2 + r * (1.F / 6 + r * (1.F / 24 + r * (1.F / 120 + r * (1.F / 720 + r * (1.F / 5040)))))));
    return series * std::bit_cast<float>((std::int32_t(n) + 127) << 23);
}

[[gnu::always_inline]] inline void addAndNormalize(float *__restrict row, const float *__restrict added,
                                                   const float *__restrict scale, const float *__restrict bias,
                                                   int width)
{
    for (int i = 0; i < width; ++i)
        row[i] += added[i];
    const float mean = sum(row, width) / float(width);
    for (int i = 0; i < width; ++i)
        row[i] -= mean;
    const float deviation = std::sqrt(dot(row, row, width) / float(width) + 1e-6F);
    for (int i = 0; i < width; ++i)
        row[i] = scale[i] * (row[i] / deviation) + bias[i];
}

[[gnu::always_inline]] inline void attend(const float *__restrict query, const AttendedRows &attended,
                                          float *__restrict weights, float *__restrict out)
{
    const int headWidth = attended.width / attended.heads;
    const float scale = 1 / std::sqrt(float(headWidth));
    std::fill_n(out, attended.width, 0.F);
    for (int start = 0; start < attended.width; start += headWidth) {
        for (int row = 0; row < attended.rows; ++row)
            weights[row] =
                scale * dot(query + start, attended.keys + std::ptrdiff_t(row) * attended.width + start, headWidth);
        const float largest = *std::max_element(weights, weights + attended.rows);
        for (int row = 0; row < attended.rows; ++row)
            weights[row] = power(weights[row] - largest);
        const float total = sum(weights, attended.rows);
        for (int row = 0; row < attended.rows; ++row) {
            const float weight = weights[row] / total;
            const float *const value = attended.values + std::ptrdiff_t(row) * attended.width + start;
            for (int i = 0; i < headWidth; ++i)
                out[start + i] += weight * value[i];
        }
    }
}

[[gnu::always_inline]] inline void advanceCell(float *__restrict cell, float *__restrict forget,
                                               const float *__restrict candidate, int width)
{
    for (int i = 0; i < width; ++i) {
        const float small = power(-std::abs(forget[i]));
        const float kept = (forget[i] > 0 ? 1 : small) / (1 + small);
        cell[i] = kept * cell[i] + (1 - kept) * candidate[i];
        forget[i] = std::max(cell[i], 0.F);
    }
}

#if defined(__x86_64__)
// The same code with longer vectors. Without fused operations, whose results differ.

[[gnu::target("avx2")]] void addAndNormalizeAvx2(float *row, const float *added, const float *scale, const float *bias,
                                                 int width)
{
    addAndNormalize(row, added, scale, bias, width);
}

[[gnu::target("avx2")]] void attendAvx2(const float *query, const AttendedRows &attended, float *weights, float *out)
{
    attend(query, attended, weights, out);
}

[[gnu::target("avx2")]] void advanceCellAvx2(float *cell, float *forget, const float *candidate, int width)
{
    advanceCell(cell, forget, candidate, width);
}
#endif

} // namespace

const std::vector<FloatOperations> &floatOperations()
{
    static const std::vector<FloatOperations> operations = [] {
        std::vector<FloatOperations> found;
#if defined(__x86_64__)
        if (__builtin_cpu_supports("avx2") != 0)
            found.push_back({addAndNormalizeAvx2, attendAvx2, advanceCellAvx2});
#endif
        found.push_back({addAndNormalize, attend, advanceCell});
        return found;
    }();
    return operations;
}

} // namespace lucentra
