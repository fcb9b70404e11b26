#include "Int8Product.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

#if defined(__x86_64__)
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace lucentra {

namespace {

const std::int8_t *rightRow(const Int8Kernel::Factors &f, int column)
{
    return f.right + std::ptrdiff_t(f.rightRows ? f.rightRows[column] : std::uint32_t(column)) * f.depth;
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

void multiplyColumns(const Int8Kernel::Factors &f, int first, float *out)
{
    for (int column = first; column < f.columns; ++column) {
        const std::int8_t *const right = rightRow(f, column);
        const float bias = f.bias ? f.bias[column] : 0;
        for (int row = 0; row < f.rows; ++row) {
            const std::int8_t *const left = f.left + std::ptrdiff_t(row) * f.depth;
            const int sum = std::inner_product(left, left + f.depth, right, 0);
            out[std::ptrdiff_t(row) * f.columns + column] = float(sum) * f.scales[row] + bias;
        }
    }
}

void multiplyPlain(const Int8Kernel::Factors &f, float *out)
{
    multiplyColumns(f, 0, out);
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
        for (std::size_t p = 0; p < 4; ++p) {
            const __m256 product = _mm256_mul_ps(_mm256_loadu_ps(values + i + 8 * p), factor);
            parts[p] = _mm256_cvtps_epi32(_mm256_max_ps(_mm256_min_ps(product, most), least));
        }
        const __m256i packed =
            _mm256_packs_epi16(_mm256_packs_epi32(parts[0], parts[1]), _mm256_packs_epi32(parts[2], parts[3]));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out + i), _mm256_permutevar8x32_epi32(packed, order));
    }
    quantizePlain(values + i, count - i, multiplier, out + i);
}

/// The instructions that multiply bytes. All of them multiply unsigned by signed bytes.
enum class ByteProducts {
    Avx2,       ///< add two neighbours in 16 bits
    Avx512Vnni, ///< add four neighbours in 32 bits
    AvxVnni,    ///< the same in a shorter encoding, for processors without AVX-512
};

constexpr int step = 32; ///< bytes of a register

/// Adds the products of `step` numbers to `sums`, four neighbours to each. The VNNI instructions read the right's sign
/// bit as 128, and need it inverted: each sum then has 128 times its numbers of the left too much.
template <ByteProducts Products>
[[gnu::target("avx2"), gnu::always_inline]] inline __m256i withProducts(__m256i sums, __m256i left, __m256i right)
{
    // Intrinsic functions for VNNI need a function for each encoding.
    if constexpr (Products == ByteProducts::AvxVnni) {
        asm("%{vex%} vpdpbusd %2, %1, %0" : "+x"(sums) : "x"(right), "x"(left));
    } else if constexpr (Products == ByteProducts::Avx512Vnni) {
        asm("vpdpbusd %2, %1, %0" : "+x"(sums) : "x"(right), "x"(left));
    } else {
        // Absolute values of the right and the left with the right's sign. As the left is never -128, a sum is at most
        // 2 * 127 * 128, which fits.
        const __m256i pairs = _mm256_maddubs_epi16(_mm256_abs_epi8(right), _mm256_sign_epi8(left, right));
        sums = _mm256_add_epi32(sums, _mm256_madd_epi16(pairs, _mm256_set1_epi16(1)));
    }
    return sums;
}

/// `Rows` rows of the left matrix with four of the right. `excess` is how much too large the sums of each row are.
template <ByteProducts Products, int Rows>
[[gnu::target("avx2"), gnu::always_inline]] inline void multiplyBlock(const Int8Kernel::Factors &f, int row, int column,
                                                                      const std::int32_t *excess, float *out)
{
    const std::int8_t *const left = f.left + std::ptrdiff_t(row) * f.depth;
    const std::int8_t *const right[4] = {rightRow(f, column), rightRow(f, column + 1), rightRow(f, column + 2),
                                         rightRow(f, column + 3)};
    const __m256i signs = Products == ByteProducts::Avx2 ? _mm256_setzero_si256() : _mm256_set1_epi8(-128);
    __m256i sums[Rows][4];
    for (int r = 0; r < Rows; ++r) {
        for (int c = 0; c < 4; ++c)
            sums[r][c] = _mm256_setzero_si256();
    }
    for (int i = 0; i < f.depth; i += step) {
        __m256i a[Rows];
        for (int r = 0; r < Rows; ++r)
            a[r] = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(left + std::ptrdiff_t(r) * f.depth + i));
        for (int c = 0; c < 4; ++c) {
            // Few rows need the right sooner than memory has it: the next block's is ordered, a cache line at a time.
            if (Rows < 3 && i % 64 == 0)
                _mm_prefetch(rightRow(f, std::min(column + 4 + c, f.columns - 1)) + i, _MM_HINT_T0);
            const __m256i b =
                _mm256_xor_si256(signs, _mm256_loadu_si256(reinterpret_cast<const __m256i *>(right[c] + i)));
            for (int r = 0; r < Rows; ++r)
                sums[r][c] = withProducts<Products>(sums[r][c], a[r], b);
        }
    }
    for (int r = 0; r < Rows; ++r) {
        const __m256i quads =
            _mm256_hadd_epi32(_mm256_hadd_epi32(sums[r][0], sums[r][1]), _mm256_hadd_epi32(sums[r][2], sums[r][3]));
        __m128i total = _mm_add_epi32(_mm256_castsi256_si128(quads), _mm256_extracti128_si256(quads, 1));
        if constexpr (Products != ByteProducts::Avx2)
            total = _mm_sub_epi32(total, _mm_set1_epi32(excess[r]));
        const __m128 scaled = _mm_mul_ps(_mm_cvtepi32_ps(total), _mm_set1_ps(f.scales[row + r]));
        const __m128 bias = f.bias ? _mm_loadu_ps(f.bias + column) : _mm_setzero_ps();
        _mm_storeu_ps(out + std::ptrdiff_t(row + r) * f.columns + column, _mm_add_ps(scaled, bias));
    }
}

template <ByteProducts Products>
[[gnu::target("avx2")]] void multiplyVectors(const Int8Kernel::Factors &f, float *out)
{
    constexpr int together = 48; // rows of the left matrix that stay in the cache while all of the right passes
    const int whole = f.depth % step == 0 ? f.columns / 4 * 4 : 0;
    // Not at the end: GCC 12 jumps there without clearing the upper halves of the registers, which slows all code after
    // it.
    multiplyColumns(f, whole, out);
    for (int first = 0; first < f.rows; first += together) {
        const int end = std::min(first + together, f.rows);
        std::int32_t excess[together];
        for (int row = first; row < end; ++row) {
            const std::int8_t *const left = f.left + std::ptrdiff_t(row) * f.depth;
            excess[row - first] = 128 * std::accumulate(left, left + f.depth, 0);
        }
        for (int column = 0; column < whole; column += 4) {
            int row = first;
            // Four are two and two: a block of one row costs nearly as much as one of two.
            for (; end - row == 3 || end - row > 4; row += 3)
                multiplyBlock<Products, 3>(f, row, column, excess + row - first, out);
            for (; end - row >= 2; row += 2)
                multiplyBlock<Products, 2>(f, row, column, excess + row - first, out);
            if (row < end)
                multiplyBlock<Products, 1>(f, row, column, excess + row - first, out);
        }
    }
}

bool hasAvxVnni()
{
    // Clang 14's __builtin_cpu_supports doesn't know it.
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    return __get_cpuid_count(7, 1, &a, &b, &c, &d) != 0 && (a & (1U << 4U)) != 0;
}

#endif

} // namespace

const std::vector<Int8Kernel> &int8Kernels()
{
    static const std::vector<Int8Kernel> kernels = [] {
        std::vector<Int8Kernel> found;
#if defined(__x86_64__)
        if (__builtin_cpu_supports("avx2") != 0) {
            if (hasAvxVnni())
                found.push_back({"AVX-VNNI", quantizeAvx2, multiplyVectors<ByteProducts::AvxVnni>});
            if (__builtin_cpu_supports("avx512vl") != 0 && __builtin_cpu_supports("avx512vnni") != 0)
                found.push_back({"AVX-512 VNNI", quantizeAvx2, multiplyVectors<ByteProducts::Avx512Vnni>});
            found.push_back({"AVX2", quantizeAvx2, multiplyVectors<ByteProducts::Avx2>});
        }
#endif
        found.push_back({"plain", quantizePlain, multiplyPlain});
        return found;
    }();
    return kernels;
}

} // namespace lucentra
