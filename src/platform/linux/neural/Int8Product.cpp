#include "Int8Product.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace lucentra {

namespace {

const std::int8_t *rightRow(const Int8Kernel::Factors &f, int column)
{
    return f.right + std::ptrdiff_t(f.rightRows ? f.rightRows[column] : std::uint32_t(column)) * f.depth;
}

std::int32_t dotProduct(const std::int8_t *left, const std::int8_t *right, int depth)
{
    std::int32_t sum = 0;
    for (int i = 0; i < depth; ++i)
        sum += left[i] * right[i];
    return sum;
}

std::int8_t quantized(float value)
{
    return std::int8_t(std::lrint(std::clamp(value, -127.F, 127.F)));
}

void quantizePlain(const float *values, int count, float multiplier, std::int8_t *out)
{
    for (int i = 0; i < count; ++i)
        out[i] = quantized(values[i] * multiplier);
}

void multiplyPlain(const Int8Kernel::Factors &f, float *out)
{
    for (int column = 0; column < f.columns; ++column) {
        const std::int8_t *const right = rightRow(f, column);
        const float bias = f.bias ? f.bias[column] : 0;
        for (int row = 0; row < f.rows; ++row)
            out[std::ptrdiff_t(row) * f.columns + column] =
                float(dotProduct(f.left + std::ptrdiff_t(row) * f.depth, right, f.depth)) * f.scales[row] + bias;
    }
}

#if defined(__x86_64__)

[[gnu::target("avx2")]] void quantizeAvx2(const float *values, int count, float multiplier, std::int8_t *out)
{
    const __m256 factor = _mm256_set1_ps(multiplier);
    const __m256 most = _mm256_set1_ps(127);
    const __m256 least = _mm256_set1_ps(-127);
    // Packing interleaves the halves of the registers.
    const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    int i = 0;
    for (; i + 32 <= count; i += 32) {
        __m256i parts[4];
        for (int p = 0; p < 4; ++p) {
            const __m256 product = _mm256_mul_ps(_mm256_loadu_ps(values + i + 8 * p), factor);
            parts[p] = _mm256_cvtps_epi32(_mm256_max_ps(_mm256_min_ps(product, most), least));
        }
        const __m256i packed = _mm256_packs_epi16(_mm256_packs_epi32(parts[0], parts[1]),
                                                  _mm256_packs_epi32(parts[2], parts[3]));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out + i), _mm256_permutevar8x32_epi32(packed, order));
    }
    quantizePlain(values + i, count - i, multiplier, out + i);
}

/// `Rows` rows of the left matrix with four of the right. The instruction for bytes multiplies unsigned by signed ones and
/// adds neighbours in 16 bits: absolute values of the right and the left with the right's sign. As the left is never -128,
/// a sum is at most 2 * 127 * 128, which fits.
template <int Rows>
[[gnu::target("avx2"), gnu::always_inline]] inline void multiplyBlock(const Int8Kernel::Factors &f, int row, int column,
                                                                      float *out)
{
    const std::int8_t *const left = f.left + std::ptrdiff_t(row) * f.depth;
    const std::int8_t *const right[4] = {rightRow(f, column), rightRow(f, column + 1), rightRow(f, column + 2),
                                         rightRow(f, column + 3)};
    const __m256i ones = _mm256_set1_epi16(1);
    __m256i sums[Rows][4];
    for (int r = 0; r < Rows; ++r) {
        for (int c = 0; c < 4; ++c)
            sums[r][c] = _mm256_setzero_si256();
    }
    int i = 0;
    for (; i + 32 <= f.depth; i += 32) {
        for (int c = 0; c < 4; ++c) {
            const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(right[c] + i));
            const __m256i size = _mm256_abs_epi8(b);
            for (int r = 0; r < Rows; ++r) {
                const __m256i a = _mm256_loadu_si256(
                    reinterpret_cast<const __m256i *>(left + std::ptrdiff_t(r) * f.depth + i));
                const __m256i pairs = _mm256_maddubs_epi16(size, _mm256_sign_epi8(a, b));
                sums[r][c] = _mm256_add_epi32(sums[r][c], _mm256_madd_epi16(pairs, ones));
            }
        }
    }
    for (int r = 0; r < Rows; ++r) {
        const __m256i quads = _mm256_hadd_epi32(_mm256_hadd_epi32(sums[r][0], sums[r][1]),
                                                _mm256_hadd_epi32(sums[r][2], sums[r][3]));
        __m128i total = _mm_add_epi32(_mm256_castsi256_si128(quads), _mm256_extracti128_si256(quads, 1));
        if (i < f.depth) {
            alignas(16) std::int32_t rest[4];
            for (int c = 0; c < 4; ++c)
                rest[c] = dotProduct(left + std::ptrdiff_t(r) * f.depth + i, right[c] + i, f.depth - i);
            total = _mm_add_epi32(total, _mm_load_si128(reinterpret_cast<const __m128i *>(rest)));
        }
        const __m128 scaled = _mm_mul_ps(_mm_cvtepi32_ps(total), _mm_set1_ps(f.scales[row + r]));
        const __m128 bias = f.bias ? _mm_loadu_ps(f.bias + column) : _mm_setzero_ps();
        _mm_storeu_ps(out + std::ptrdiff_t(row + r) * f.columns + column, _mm_add_ps(scaled, bias));
    }
}

[[gnu::target("avx2")]] void multiplyAvx2(const Int8Kernel::Factors &f, float *out)
{
    constexpr int together = 48; // rows of the left matrix that stay in the cache while all of the right passes
    const int whole = f.columns / 4 * 4;
    for (int first = 0; first < f.rows; first += together) {
        const int end = std::min(first + together, f.rows);
        for (int column = 0; column < whole; column += 4) {
            int row = first;
            // Four are two and two: a block of one row costs nearly as much as one of two.
            for (; end - row == 3 || end - row > 4; row += 3)
                multiplyBlock<3>(f, row, column, out);
            for (; end - row >= 2; row += 2)
                multiplyBlock<2>(f, row, column, out);
            if (row < end)
                multiplyBlock<1>(f, row, column, out);
        }
    }
    for (int column = whole; column < f.columns; ++column) {
        for (int row = 0; row < f.rows; ++row) {
            const std::int32_t sum =
                dotProduct(f.left + std::ptrdiff_t(row) * f.depth, rightRow(f, column), f.depth);
            out[std::ptrdiff_t(row) * f.columns + column] =
                float(sum) * f.scales[row] + (f.bias ? f.bias[column] : 0);
        }
    }
}

#endif

} // namespace

const Int8Kernel &plainInt8Kernel()
{
    static constexpr Int8Kernel kernel{"plain", quantizePlain, multiplyPlain};
    return kernel;
}

const Int8Kernel &bestInt8Kernel()
{
#if defined(__x86_64__)
    static constexpr Int8Kernel avx2{"AVX2", quantizeAvx2, multiplyAvx2};
    static const bool hasAvx2 = __builtin_cpu_supports("avx2") != 0;
    if (hasAvx2)
        return avx2;
#endif
    return plainInt8Kernel();
}

} // namespace lucentra
