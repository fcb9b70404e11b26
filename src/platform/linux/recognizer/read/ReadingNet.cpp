#include "read/ReadingNet.h"

#include "read/ModelFile.h"

#include <leptonica/allheaders.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace lucentra {
namespace {

// Numbers between the layers are from -1 to 1 and kept as integers.
constexpr float one = 16384;
constexpr int lane = 32; // columns of weights are a multiple of this, the most that are multiplied together
constexpr int squareOutputs = 16;
constexpr int squareInputs = 9; // 3 × 3 pixels

[[gnu::always_inline]] inline std::int16_t integerOf(float number)
{
    return std::int16_t(number * one);
}

/// The hyperbolic tangent by a fraction, right to 0.0001.
[[gnu::always_inline]] inline float tanhOf(float x)
{
    x = std::min(std::max(x, -4.9F), 4.9F);
    const float s = x * x;
    return x * (135135 + s * (17325 + s * (378 + s))) / (135135 + s * (62370 + s * (3150 + 28 * s)));
}

[[gnu::always_inline]] inline float logisticOf(float x)
{
    return 0.5F + 0.5F * tanhOf(0.5F * x);
}

/// The sums of `rows` rows of weights by numbers; `rows` is a multiple of 4, `columns` one of `lane`.
void multiplyAnywhere(const std::int8_t *weights, const std::int16_t *numbers, int columns, int rows,
                      std::int32_t *sums)
{
    for (int row = 0; row < rows; ++row, weights += columns) {
        std::int32_t sum = 0;
        for (int i = 0; i < columns; ++i)
            sum += std::int32_t(weights[i]) * numbers[i];
        sums[row] = sum;
    }
}

/// One step of an LSTM layer: from the sums of candidate, input, forget and output gates, a quarter of `gates` each,
/// the next state and output.
[[gnu::always_inline]] inline void computeGates(const float *gates, int size, float *state, std::int16_t *output)
{
    for (int k = 0; k < size; ++k) {
        const float kept = logisticOf(gates[2 * size + k]) * state[k] + logisticOf(gates[size + k]) * tanhOf(gates[k]);
        state[k] = std::min(std::max(kept, -100.F), 100.F);
        output[k] = integerOf(logisticOf(gates[3 * size + k]) * tanhOf(state[k]));
    }
}

/// The largest outputs over a square of 3 × 3 places, each of which sees the 3 × 3 pixels around it. `weights` has a
/// row of outputs for each pixel, column by column, and one that is added.
[[gnu::always_inline]] inline void computeSquare(const float *weights, const float *pixels, std::ptrdiff_t rowStep,
                                                 float *most)
{
    std::fill_n(most, squareOutputs, -1e9F);
    for (int place = 0; place < 9; ++place) {
        float sums[squareOutputs];
        std::copy_n(weights + squareInputs * squareOutputs, squareOutputs, sums);
        for (int k = 0; k < squareInputs; ++k) {
            const float pixel = pixels[(place / 3 + k % 3) * rowStep + place % 3 + k / 3];
            for (int i = 0; i < squareOutputs; ++i)
                sums[i] += weights[k * squareOutputs + i] * pixel;
        }
        for (int i = 0; i < squareOutputs; ++i)
            most[i] = most[i] > sums[i] ? most[i] : sums[i];
    }
}

void computeSquareAnywhere(const float *weights, const float *pixels, std::ptrdiff_t rowStep, float *most)
{
    computeSquare(weights, pixels, rowStep, most);
}

void computeGatesAnywhere(const float *gates, int size, float *state, std::int16_t *output)
{
    computeGates(gates, size, state, output);
}

#if defined(__x86_64__)
/// Stores the sum of each of four rows of numbers.
[[gnu::target("avx2")]] inline void storeSums(const __m256i *rows, std::int32_t *sums)
{
    const __m256i halves = _mm256_hadd_epi32(_mm256_hadd_epi32(rows[0], rows[1]), _mm256_hadd_epi32(rows[2], rows[3]));
    const __m128i whole = _mm_add_epi32(_mm256_castsi256_si128(halves), _mm256_extracti128_si256(halves, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(sums), whole);
}

[[gnu::target("avx2")]] void multiplyAvx2(const std::int8_t *weights, const std::int16_t *numbers, int columns,
                                          int rows, std::int32_t *sums)
{
    constexpr int together = 16;
    for (int row = 0; row < rows; row += 4, weights += std::ptrdiff_t(4) * columns) {
        __m256i total[4] = {};
        for (int i = 0; i < columns; i += together) {
            const __m256i x = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(numbers + i));
            for (int r = 0; r < 4; ++r) {
                const auto *from = reinterpret_cast<const __m128i *>(weights + std::ptrdiff_t(r) * columns + i);
                const __m256i product = _mm256_madd_epi16(_mm256_cvtepi8_epi16(_mm_loadu_si128(from)), x);
                total[r] = _mm256_add_epi32(total[r], product);
            }
        }
        storeSums(total, sums + row);
    }
}

[[gnu::target("avx512f,avx512bw,avx512vnni")]] void
multiplyAvx512(const std::int8_t *weights, const std::int16_t *numbers, int columns, int rows, std::int32_t *sums)
{
    constexpr int together = 32;
    for (int row = 0; row < rows; row += 4, weights += std::ptrdiff_t(4) * columns) {
        __m512i total[4] = {};
        for (int i = 0; i < columns; i += together) {
            const __m512i x = _mm512_loadu_si512(numbers + i);
            for (int r = 0; r < 4; ++r) {
                const auto *from = reinterpret_cast<const __m256i *>(weights + std::ptrdiff_t(r) * columns + i);
                total[r] = _mm512_dpwssd_epi32(total[r], _mm512_cvtepi8_epi16(_mm256_loadu_si256(from)), x);
            }
        }
        __m256i halves[4];
        for (int r = 0; r < 4; ++r)
            halves[r] = _mm256_add_epi32(_mm512_maskz_extracti64x4_epi64(15, total[r], 0),
                                         _mm512_maskz_extracti64x4_epi64(15, total[r], 1));
        storeSums(halves, sums + row);
    }
}

[[gnu::target("avx2,fma")]] void computeGatesAvx2(const float *gates, int size, float *state, std::int16_t *output)
{
    computeGates(gates, size, state, output);
}

[[gnu::target("avx2,fma")]] void computeSquareAvx2(const float *weights, const float *pixels, std::ptrdiff_t rowStep,
                                                   float *most)
{
    computeSquare(weights, pixels, rowStep, most);
}
#endif

/// How dark ink is and how light paper, by the local extremes of a row. Half of each side of them doesn't count.
std::array<int, 2> rangeOf(const std::vector<int> &row)
{
    std::vector<int> dark;
    std::vector<int> light;
    for (std::size_t x = 1; x + 1 < row.size(); ++x) {
        const int before = row[x - 1];
        const int here = row[x];
        const int after = row[x + 1];
        if ((here < before && here <= after) || (here <= before && here < after))
            dark.push_back(here);
        if ((here > before && here >= after) || (here >= before && here > after))
            light.push_back(here);
    }
    const auto quantile = [](std::vector<int> &values, std::size_t quarters, int otherwise) {
        if (values.empty())
            return otherwise;
        std::ranges::sort(values);
        return values[quarters * (values.size() - 1) / 4];
    };
    return {quantile(dark, 1, 0), quantile(light, 3, 255)};
}

} // namespace

/// The loops that take nearly all the time.
struct ReadingNet::Kernel
{
    decltype(&multiplyAnywhere) multiply;
    decltype(&computeGatesAnywhere) computeGates;
    decltype(&computeSquareAnywhere) computeSquare;

    static const Kernel &of(Instructions instructions)
    {
        static constexpr Kernel any{multiplyAnywhere, computeGatesAnywhere, computeSquareAnywhere};
#if defined(__x86_64__)
        static constexpr Kernel avx2{multiplyAvx2, computeGatesAvx2, computeSquareAvx2};
        static constexpr Kernel avx512{multiplyAvx512, computeGatesAvx2, computeSquareAvx2};
        if (instructions != Instructions::Any)
            return instructions == Instructions::Avx2 ? avx2 : avx512;
#endif
        return any;
    }
};

/// Numbers that go from layer to layer, a row for each place.
struct ReadingNet::Rows
{
    int count;
    int width;
    std::vector<std::int16_t> numbers = std::vector<std::int16_t>(std::size_t(count) * std::size_t(width));

    std::int16_t *row(int i) { return numbers.data() + std::ptrdiff_t(i) * width; }
    const std::int16_t *row(int i) const { return numbers.data() + std::ptrdiff_t(i) * width; }
};

/// Runs a matrix, with the room that it needs.
class ReadingNet::Product
{
public:
    Product(const Matrix &matrix, const Kernel &kernel)
        : m_matrix(matrix)
        , m_kernel(kernel)
        , m_numbers(std::size_t(matrix.columns))
        , m_sums(matrix.weights.size() / std::size_t(matrix.columns))
        , m_results(m_sums.size())
    {
    }
    std::int16_t *numbers() { return m_numbers.data(); }
    const std::vector<float> &run()
    {
        m_kernel.multiply(m_matrix.weights.data(), m_numbers.data(), m_matrix.columns, int(m_sums.size()),
                          m_sums.data());
        for (std::size_t i = 0; i < m_matrix.scales.size(); ++i)
            m_results[i] = float(m_sums[i]) * m_matrix.scales[i] + m_matrix.biases[i];
        return m_results;
    }

private:
    const Matrix &m_matrix;
    const Kernel &m_kernel;
    std::vector<std::int16_t> m_numbers;
    std::vector<std::int32_t> m_sums;
    std::vector<float> m_results;
};

ReadingNet::Instructions ReadingNet::fastest()
{
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vnni"))
        return Instructions::Avx512;
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        return Instructions::Avx2;
#endif
    return Instructions::Any;
}

ReadingNet::ReadingNet(QByteArrayView data, Instructions instructions)
    : m_kernel(Kernel::of(instructions))
{
    constexpr qsizetype noneAt = 16; // before the end
    DataReader reader(data);
    takeLayer(reader, 0);
    m_none = DataReader(data.last(std::min(noneAt, data.size()))).take<qint32>();
    if (!isWhole())
        throw std::runtime_error("a net of another kind");
    for (int k = 0; k <= squareInputs; ++k) {
        for (std::size_t row = 0; row < squareOutputs; ++row) {
            const float weight = one * m_squares.scales[row] * m_squares.weights[row * lane + std::size_t(k)];
            m_squareWeights.push_back(k < squareInputs ? weight : m_squares.biases[row]);
        }
    }
}

/// Takes a layer, or layers within one another: a byte, the kind, two bytes, four numbers of which only the first, the
/// flags, matters, the name; then what the kind has.
void ReadingNet::takeLayer(DataReader &data, int depth)
{
    constexpr int deepest = 8;
    constexpr qint32 hasRates = 64;
    const auto text = [&data] { return data.bytes(data.take<qint32>()).toByteArray(); };
    data.bytes(1);
    const QByteArray kind = text();
    data.bytes(2);
    const qint32 flags = data.take<qint32>();
    data.bytes(12);
    text();
    if (kind == "Series" || kind == "RTLReversed" || kind == "XYTranspose") {
        for (qint32 left = depth < deepest ? data.take<qint32>() : 0; left > 0; --left)
            takeLayer(data, depth + 1);
        if ((flags & hasRates) != 0)
            data.bytes(4 * qsizetype(data.take<qint32>()));
    } else if (kind == "Input") {
        data.bytes(20);
    } else if (kind == "Convolve" || kind == "Maxpool") {
        data.bytes(8);
    } else if (kind == "LSTM" || kind == "SummLSTM") {
        data.bytes(4);
        m_layers.emplace_back();
        for (int gate = 0; gate < 4; ++gate)
            append(m_layers.back(), data);
    } else {
        append(m_out.rows == 0 && m_squares.rows == 0 ? m_squares : m_out, data);
    }
}

/// Takes weights and puts them below those of a matrix. Models that were made to be trained further have weights of
/// floating point; they become integers of a scale for each row, as Tesseract itself makes them.
void ReadingNet::append(Matrix &matrix, DataReader &data)
{
    constexpr int most = 1 << 13;
    constexpr int mostInputs = 1 << 10; // so that sums stay integers of 32 bits
    constexpr int areIntegers = 1;
    constexpr int areDoubles = 128; // rather than floats of 32 bits
    constexpr double largest = 127;
    constexpr double mostScale = 1e4; // far above that of any model; what is computed stays finite
    const int kind = data.take<quint8>();
    const int rows = data.take<qint32>();
    const int columns = data.take<qint32>();
    if ((kind & (areIntegers | areDoubles)) == 0 || rows < 1 || rows > most || columns < 2 || columns > mostInputs ||
        (matrix.rows > 0 && columns != matrix.inputs + 1))
        throw std::runtime_error("weights of another kind");
    std::vector<std::int8_t> weights;
    std::vector<double> scales;
    if ((kind & areIntegers) != 0) {
        data.bytes(1);
        const QByteArrayView bytes = data.bytes(qsizetype(rows) * columns);
        weights.assign(bytes.begin(), bytes.end());
        if (data.take<qint32>() != rows)
            throw std::runtime_error("weights without a scale");
        std::generate_n(std::back_inserter(scales), rows, [&] { return std::bit_cast<double>(data.take<quint64>()); });
    } else {
        data.bytes(sizeof(double));
        for (int row = 0; row < rows; ++row) {
            std::vector<double> numbers(static_cast<std::size_t>(columns));
            std::ranges::generate(numbers, [&] { return std::bit_cast<double>(data.take<quint64>()); });
            if (!std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); }))
                throw std::runtime_error("weights that are no numbers");
            const auto [least, greatest] = std::ranges::minmax(numbers);
            scales.push_back(std::max({-least, greatest, 1e-9}) / largest);
            for (const double number : numbers)
                weights.push_back(std::int8_t(std::clamp(std::round(number / scales.back()), -largest, largest)));
        }
    }
    matrix.inputs = columns - 1;
    matrix.columns = (matrix.inputs + lane - 1) / lane * lane;
    matrix.weights.resize(std::size_t(matrix.rows + rows + 3) / 4 * 4 * std::size_t(matrix.columns));
    for (int row = 0; row < rows; ++row) {
        const std::int8_t *from = weights.data() + std::ptrdiff_t(row) * columns;
        std::copy_n(from, matrix.inputs, matrix.weights.data() + std::ptrdiff_t(matrix.rows + row) * matrix.columns);
        const double scale = scales[std::size_t(row)];
        if (!std::isfinite(scale) || std::abs(scale) > mostScale)
            throw std::runtime_error("weights without a scale");
        matrix.scales.push_back(float(scale / one));
        matrix.biases.push_back(float(scale * from[matrix.inputs]));
    }
    matrix.rows += rows;
}

bool ReadingNet::isWhole() const
{
    int inputs = squareOutputs;
    for (const Matrix &layer : m_layers) {
        if (layer.rows % 4 != 0 || layer.inputs != inputs + layer.rows / 4)
            return false;
        inputs = layer.rows / 4;
    }
    return m_squares.rows == squareOutputs && m_squares.inputs == squareInputs && m_layers.size() == 4 &&
           m_out.inputs == inputs && m_none >= 0 && m_none < m_out.rows;
}

/// The convolution and what follows it: max pooling over 3 × 3 places. The result has a row for each place, column by
/// column.
ReadingNet::Rows ReadingNet::squares(const Strip &strip) const
{
    const int width = pixGetWidth(strip.get());
    const int height = pixGetHeight(strip.get());
    const auto greyRow = [&](int y) {
        const l_uint32 *from = pixGetData(strip.get()) + std::ptrdiff_t(y) * pixGetWpl(strip.get());
        std::vector<int> row;
        for (int x = 0; x < width; ++x)
            row.push_back(GET_DATA_BYTE(from, x));
        return row;
    };
    const std::array<int, 2> range = rangeOf(greyRow(height / 2));
    const int black = range[0];
    const int white = range[1];
    const float contrast = white > black ? float(white - black) / 2 : 1;
    const std::ptrdiff_t rowStep = width + 2;
    std::vector<float> pixels(std::size_t(rowStep * (height + 2))); // with a border in the middle between ink and paper
    for (int y = 0; y < height; ++y) {
        const std::vector<int> grey = greyRow(y);
        std::ranges::transform(grey, pixels.begin() + (y + 1) * rowStep + 1,
                               [&](int value) { return std::clamp(float(value - black) / contrast - 1, -1.F, 1.F); });
    }
    const int rows = height / step;
    Rows squares{width / step * rows, squareOutputs};
    for (int i = 0; i < squares.count; ++i) {
        std::array<float, squareOutputs> most{};
        m_kernel.computeSquare(m_squareWeights.data(), pixels.data() + i % rows * step * rowStep + i / rows * step,
                               rowStep, most.data());
        std::ranges::transform(most, squares.row(i), [](float number) { return integerOf(tanhOf(number)); });
    }
    return squares;
}

/// Runs an LSTM layer over `count` rows from `first` on, one after the other by `direction`, and calls `take` with each
/// row's number and the layer's output.
template <typename Take>
void ReadingNet::run(const Matrix &layer, const Rows &in, int first, int count, int direction, const Take &take) const
{
    const int size = layer.rows / 4;
    Product product(layer, m_kernel);
    std::int16_t *output = product.numbers() + in.width;
    std::vector<float> state(std::size_t(size), 0.F);
    for (int i = first; count > 0; --count, i += direction) {
        std::copy_n(in.row(i), in.width, product.numbers());
        m_kernel.computeGates(product.run().data(), size, state.data(), output);
        take(i, output);
    }
}

void ReadingNet::read(const Strip &strip, const std::function<void(std::span<const float>)> &take) const
{
    const int places = pixGetWidth(strip.get()) / step;
    const int height = pixGetHeight(strip.get()) / step;
    const Rows seen = squares(strip);
    const auto sizeOf = [this](std::size_t layer) { return m_layers[layer].rows / 4; };
    Rows columns{places, sizeOf(0)};
    for (int x = 0; x < places; ++x) {
        const auto keep = [&](int, const std::int16_t *output) { std::copy_n(output, columns.width, columns.row(x)); };
        run(m_layers[0], seen, x * height, height, 1, keep);
    }
    const auto keeper = [](Rows &rows) {
        return [&rows](int i, const std::int16_t *output) { std::copy_n(output, rows.width, rows.row(i)); };
    };
    Rows right{places, sizeOf(1)};
    run(m_layers[1], columns, 0, places, 1, keeper(right));
    Rows left{places, sizeOf(2)};
    run(m_layers[2], right, places - 1, places, -1, keeper(left));
    Product out(m_out, m_kernel);
    std::vector<float> logarithms(static_cast<std::size_t>(m_out.rows));
    run(m_layers[3], left, 0, places, 1, [&](int, const std::int16_t *output) {
        std::copy_n(output, m_out.inputs, out.numbers());
        const std::span<const float> sums(out.run().data(), logarithms.size());
        const float most = std::ranges::max(sums);
        float whole = 0;
        for (const float sum : sums)
            whole += std::exp(sum - most);
        std::ranges::transform(sums, logarithms.begin(), [&](float sum) { return sum - most - std::log(whole); });
        take(logarithms);
    });
}

} // namespace lucentra
