#pragma once

#include <cstddef>
#include <vector>

namespace lucentra {

/// A picture of numbers: channels last, with a border of zeros that convolutions may reach into.
class NumberPlane
{
public:
    static constexpr int border = 2; // pixels; the widest reach of a kernel

    /// Sets the size, with `channels` numbers per pixel. If it differs from the size before, all numbers are zero.
    void resize(int width, int height, int channels);
    void clear();

    int width() const { return m_width; }
    int height() const { return m_height; }
    int channels() const { return m_channels; }

    /// The first channel of a pixel. The border may be reached by negative coordinates.
    float *at(int x, int y) { return m_values.data() + offset(x, y); }
    const float *at(int x, int y) const { return m_values.data() + offset(x, y); }
    std::ptrdiff_t rowStep() const { return std::ptrdiff_t(m_width + 2 * border) * m_channels; }

private:
    std::ptrdiff_t offset(int x, int y) const { return (y + border) * rowStep() + (x + border) * m_channels; }

    int m_width = 0;
    int m_height = 0;
    int m_channels = 0;
    std::vector<float> m_values;
};

/// One convolution, its border filled with zeros, and what follows it: a bias and, if `clips`, the removal of negative
/// numbers.
struct Convolution
{
    static constexpr int lanes = 8; // output channels that are computed together; planes store multiples of it

    int kernel = 3; ///< side; 1 or 3
    int stride = 1;
    int dilation = 1;
    int inputs = 0; ///< channels
    int outputs = 0;
    bool clips = false;
    std::vector<float> weights; ///< as `arrange` orders them
    std::vector<float> biases;

    /// Output channels, filled up to whole lanes.
    int storedOutputs() const { return (outputs + lanes - 1) / lanes * lanes; }

    /// Takes the weights in the order [output][input][row][column].
    void arrange(const std::vector<float> &plain);

    /// Computes the rows from `first` to before `end` of `out`, whose size is that of `in` by the stride, and which is
    /// at least 8 pixels wide. Uses AVX2 where the processor has it.
    void run(const NumberPlane &in, NumberPlane &out, int first, int end) const;
};

} // namespace lucentra
