#pragma once

#include "Mask.h"

#include <QByteArrayView>

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace lucentra {

class DataReader;

/// A net that reads a strip: one of Tesseract's. Convolution and max pooling over 3 × 3
/// pixels, an LSTM layer down each column, then three along the strip, to the right, to the left and to the right
/// again. Any thread, several at once.
class ReadingNet
{
public:
    static constexpr int step = 3; ///< pixels of the strip between two places

    /// The processor's instructions that a net is run with. What comes out is the same but for rounding.
    enum class Instructions { Any, Avx2, Avx512 };
    /// The fastest of this processor.
    static Instructions fastest();

    /// Takes the net of a model. Throws std::runtime_error where it is broken or of another kind.
    explicit ReadingNet(QByteArrayView data, Instructions instructions = fastest());

    /// The code of "no character here".
    int none() const { return m_none; }

    /// Calls `take` for each place from the left to the right with the logarithm of each code's probability. The strip
    /// is grey, of the height that the net was made for.
    void read(const Strip &strip, const std::function<void(std::span<const float>)> &take) const;

private:
    /// The weights of a layer: rows of integers, each with a scale and a number that is added.
    struct Matrix
    {
        int rows = 0;
        int inputs = 0;
        int columns = 0; ///< inputs, filled up to whole lanes
        std::vector<std::int8_t> weights;
        std::vector<float> scales;
        std::vector<float> biases;
    };
    struct Kernel;
    struct Rows;
    class Product;

    void takeLayer(DataReader &data, int depth);
    static void append(Matrix &matrix, DataReader &data);
    bool isWhole() const;

    Rows squares(const Strip &strip) const;
    template <typename Take>
    void run(const Matrix &layer, const Rows &in, int first, int count, int direction, const Take &take) const;

    const Kernel &m_kernel;
    std::vector<Matrix> m_layers; ///< LSTM: down, right, left, right
    Matrix m_squares;
    std::vector<float> m_squareWeights; ///< of the convolution: the outputs of each pixel, then the biases
    Matrix m_out;
    int m_none = 0;
};

} // namespace lucentra
