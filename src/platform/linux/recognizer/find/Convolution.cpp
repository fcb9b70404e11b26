#include "find/Convolution.h"

#include <algorithm>
#include <cstring>

namespace lucentra {

void NumberPlane::resize(int width, int height, int channels)
{
    if (width == m_width && height == m_height && channels == m_channels)
        return;
    m_width = width;
    m_height = height;
    m_channels = channels;
    m_values.assign(std::size_t(width + 2 * border) * std::size_t(height + 2 * border) * std::size_t(channels), 0.F);
}

void NumberPlane::clear()
{
    *this = NumberPlane();
}

namespace {

constexpr int lanes = Convolution::lanes;

// The compilers' vectors: one register with AVX, two with SSE.
using Vector = float __attribute__((vector_size(lanes * sizeof(float))));

[[gnu::always_inline]] inline void load(Vector &vector, const float *numbers)
{
    std::memcpy(&vector, numbers, sizeof vector);
}

/// How many vectors of outputs are computed together: three or two share each number that is loaded.
int togetherOf(int left)
{
    return left == 1 ? 1 : left == 2 || left == 4 ? 2 : 3;
}

/// `Outputs` vectors of outputs for `Pixels` pixels beside one another; both together fill the registers.
template <int Outputs, int Pixels>
[[gnu::always_inline]] inline void computePixels(const Convolution &c, const NumberPlane &in, const float *corner,
                                                 const float *weights, const float *biases, float *out, int outStep)
{
    const std::ptrdiff_t pixelStep = std::ptrdiff_t(c.stride) * in.channels();
    Vector sums[Pixels][Outputs];
    for (int p = 0; p < Pixels; ++p) {
        for (int o = 0; o < Outputs; ++o)
            load(sums[p][o], biases + o * lanes);
    }
    for (int row = 0; row < c.kernel; ++row) {
        for (int column = 0; column < c.kernel; ++column) {
            const float *numbers =
                corner + row * c.dilation * in.rowStep() + std::ptrdiff_t(column) * c.dilation * in.channels();
            for (int i = 0; i < c.inputs; ++i) {
                Vector factors[Outputs];
                for (int o = 0; o < Outputs; ++o)
                    load(factors[o], weights + o * lanes);
                weights += Outputs * lanes;
                for (int p = 0; p < Pixels; ++p) {
                    const float number = numbers[p * pixelStep + i];
                    for (int o = 0; o < Outputs; ++o)
                        sums[p][o] += factors[o] * number;
                }
            }
        }
    }
    for (int p = 0; p < Pixels; ++p) {
        for (int o = 0; o < Outputs; ++o) {
            Vector &sum = sums[p][o];
            if (c.clips)
                sum = sum > 0.F ? sum : sum - sum;
            std::memcpy(out + p * outStep + o * lanes, &sum, sizeof sum);
        }
    }
}

template <int Outputs, int Pixels>
[[gnu::always_inline]] inline void computeRow(const Convolution &c, const NumberPlane &in, NumberPlane &out, int y,
                                              int firstOutput, const float *weights)
{
    const int reach = c.kernel / 2 * c.dilation;
    for (int left = 0; left < out.width(); left += Pixels) {
        const int x = std::min(left, out.width() - Pixels); // the last ones overlap those before
        computePixels<Outputs, Pixels>(c, in, in.at(x * c.stride - reach, y * c.stride - reach), weights,
                                       c.biases.data() + firstOutput, out.at(x, y) + firstOutput, out.channels());
    }
}

[[gnu::always_inline]] inline void computeRows(const Convolution &c, const NumberPlane &in, NumberPlane &out, int first,
                                               int end)
{
    const std::ptrdiff_t weightsPerVector = std::ptrdiff_t(c.kernel) * c.kernel * c.inputs * lanes;
    for (int y = first; y < end; ++y) {
        const float *weights = c.weights.data();
        for (int output = 0; output < c.storedOutputs();) {
            const int together = togetherOf((c.storedOutputs() - output) / lanes);
            if (together == 3)
                computeRow<3, 4>(c, in, out, y, output, weights);
            else if (together == 2)
                computeRow<2, 6>(c, in, out, y, output, weights);
            else
                computeRow<1, 8>(c, in, out, y, output, weights);
            weights += together * weightsPerVector;
            output += together * lanes;
        }
    }
}

#if defined(__x86_64__)
[[gnu::target("avx2,fma")]] void computeRowsFast(const Convolution &c, const NumberPlane &in, NumberPlane &out,
                                                 int first, int end)
{
    computeRows(c, in, out, first, end);
}
#endif

void computeRowsAnywhere(const Convolution &c, const NumberPlane &in, NumberPlane &out, int first, int end)
{
    computeRows(c, in, out, first, end);
}

} // namespace

void Convolution::arrange(const std::vector<float> &plain)
{
    const int area = kernel * kernel;
    weights.clear();
    for (int output = 0; output < storedOutputs();) {
        const int together = togetherOf((storedOutputs() - output) / lanes) * lanes;
        for (int place = 0; place < area; ++place) {
            for (int input = 0; input < inputs; ++input) {
                for (int o = output; o < output + together; ++o)
                    weights.push_back(o < outputs ? plain[std::size_t((o * inputs + input) * area + place)] : 0.F);
            }
        }
        output += together;
    }
    biases.resize(std::size_t(storedOutputs()), 0.F);
}

void Convolution::run(const NumberPlane &in, NumberPlane &out, int first, int end) const
{
#if defined(__x86_64__)
    static const bool isFast = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    if (isFast) {
        computeRowsFast(*this, in, out, first, end);
        return;
    }
#endif
    computeRowsAnywhere(*this, in, out, first, end);
}

} // namespace lucentra
