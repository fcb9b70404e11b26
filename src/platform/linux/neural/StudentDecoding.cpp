#include "FloatOperations.h"
#include "StudentNetwork.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace lucentra {

namespace {

float largestSize(const float *values, std::size_t count)
{
    float largest = 0;
    for (std::size_t i = 0; i < count; ++i)
        largest = std::max(largest, std::abs(values[i]));
    return largest;
}

} // namespace

/// Sentences that are translated together. The words of all are the rows of one matrix, without padding.
class StudentNetwork::Batch
{
public:
    Batch(const StudentNetwork &network, const std::vector<std::vector<int>> &sentences, const Options &options,
          const Int8Kernel &kernel)
        : m_network(network)
        , m_sentences(sentences)
        , m_options(options)
        , m_kernel(kernel)
        , m_width(network.m_width)
    {
        std::size_t rows = 0;
        m_starts.push_back(0);
        for (const auto &sentence : sentences)
            m_starts.push_back(int(rows += sentence.size()));
    }

    std::vector<WordTranslation> run()
    {
        encode();
        return isWanted() ? decode() : std::vector<WordTranslation>();
    }

private:
    using Numbers = std::vector<float>;
    /// Where each sentence's rows start in a matrix, and the end of the last. Numbers that are computed from the input
    /// are the same for all rows of a sentence.
    using Starts = std::vector<int>;

    bool isWanted() const { return !m_options.isWanted || m_options.isWanted(); }

    /// Quantizes a matrix for a product.
    void quantize(const Numbers &input, const Starts &starts, const Product &product, int depth)
    {
        m_quantized.resize(input.size());
        m_scales.resize(std::size_t(starts.back()));
        for (std::size_t s = 0; s + 1 < starts.size(); ++s) {
            const auto first = std::size_t(starts[s]) * std::size_t(depth);
            const auto count = std::size_t(starts[s + 1] - starts[s]) * std::size_t(depth);
            float multiplier = product.activation;
            if (multiplier == 0) {
                const float largest = largestSize(input.data() + first, count);
                multiplier = largest > 0 ? 127 / largest : 1;
            }
            m_kernel.quantize(input.data() + first, int(count), multiplier, m_quantized.data() + first);
            std::fill(m_scales.begin() + starts[s], m_scales.begin() + starts[s + 1],
                      1 / (multiplier * product.weights.multiplier));
        }
    }

    void multiply(const Numbers &input, const Starts &starts, const Product &product, Numbers &out)
    {
        const int depth = product.weights.columns;
        quantize(input, starts, product, depth);
        out.resize(std::size_t(starts.back()) * std::size_t(product.weights.rows));
        m_kernel.multiply({.left = m_quantized.data(),
                           .rows = starts.back(),
                           .scales = m_scales.data(),
                           .right = product.weights.values,
                           .rightRows = nullptr,
                           .columns = product.weights.rows,
                           .depth = depth,
                           .bias = product.bias.empty() ? nullptr : product.bias.data()},
                          out.data());
    }

    /// rows += added, each then normalized.
    void addAndNormalize(Numbers &rows, const Numbers &added, const Norm &norm) const
    {
        for (std::size_t start = 0; start < rows.size(); start += std::size_t(m_width))
            m_floats.addAndNormalize(rows.data() + start, added.data() + start, norm.scale.data(), norm.bias.data(),
                                     m_width);
    }

    void feedForward(Numbers &rows, const Starts &starts, const FeedForward &layer)
    {
        multiply(rows, starts, layer.inner, m_inner);
        for (float &value : m_inner)
            value = std::max(value, 0.F);
        multiply(m_inner, starts, layer.outer, m_added);
        addAndNormalize(rows, m_added, layer.norm);
    }

    /// One row's attention to the rows of a sentence.
    void attend(const float *query, const Numbers &keys, const Numbers &values, std::size_t sentence, float *out)
    {
        const int first = m_starts[sentence];
        const int rows = m_starts[sentence + 1] - first;
        const auto start = std::ptrdiff_t(first) * m_width;
        m_weights.resize(std::size_t(rows));
        m_floats.attend(query, {keys.data() + start, values.data() + start, rows, m_width, m_network.m_heads},
                        m_weights.data(), out);
    }

    /// Writes sqrt(width) times the embedding of a word.
    void embed(const Int8Matrix &words, int word, float *out) const
    {
        const std::int8_t *const row = words.values + std::ptrdiff_t(word) * m_width;
        const float unit = 1 / words.multiplier;
        const float scale = std::sqrt(float(m_width));
        for (int i = 0; i < m_width; ++i)
            out[i] = scale * (float(row[i]) * unit);
    }

    void encode()
    {
        Numbers &rows = m_encoded;
        rows.resize(std::size_t(m_starts.back()) * std::size_t(m_width));
        float *row = rows.data();
        for (const auto &sentence : m_sentences) {
            for (std::size_t i = 0; i < sentence.size(); ++i, row += m_width) {
                embed(m_network.m_sourceWords, sentence[i], row);
                m_network.addPosition(int(i), row);
            }
        }
        Numbers queries;
        Numbers keys;
        Numbers values;
        Numbers attended(rows.size());
        for (const EncoderLayer &layer : m_network.m_encoder) {
            if (!isWanted())
                return;
            multiply(rows, m_starts, layer.attention.query, queries);
            multiply(rows, m_starts, layer.attention.key, keys);
            multiply(rows, m_starts, layer.attention.value, values);
            for (std::size_t s = 0; s < m_sentences.size(); ++s) {
                for (int i = m_starts[s]; i < m_starts[s + 1]; ++i) {
                    const auto at = std::ptrdiff_t(i) * m_width;
                    attend(queries.data() + at, keys, values, s, attended.data() + at);
                }
            }
            multiply(attended, m_starts, layer.attention.output, m_added);
            addAndNormalize(rows, m_added, layer.attention.norm);
            feedForward(rows, m_starts, layer.feedForward);
        }
    }

    /// A sentence that is being decoded.
    struct Line
    {
        std::size_t sentence = 0;
        std::size_t longest = 0;
        std::vector<std::uint32_t> candidates;
        Numbers bias;               ///< of the candidates
        std::vector<Numbers> cells; ///< the state of each layer
    };
    struct Context
    {
        Numbers keys, values;
    };

    void startDecoding()
    {
        for (const DecoderLayer &layer : m_network.m_decoder) {
            Context context;
            multiply(m_encoded, m_starts, layer.attention.key, context.keys);
            multiply(m_encoded, m_starts, layer.attention.value, context.values);
            m_contexts.push_back(std::move(context));
        }
        for (std::size_t s = 0; s < m_sentences.size(); ++s) {
            Line line{.sentence = s};
            const double longest = m_options.lengthFactor * double(m_sentences[s].size());
            line.longest = std::max(std::size_t(std::ceil(longest)), std::size_t(m_options.leastLength));
            if (m_options.shortlist)
                line.candidates = m_options.shortlist->candidates(m_sentences[s], m_network.hasSharedWords());
            for (const std::uint32_t word : line.candidates)
                line.bias.push_back(m_network.m_output.bias[word]);
            line.cells.assign(m_network.m_decoder.size(), Numbers(std::size_t(m_width)));
            m_lines.push_back(std::move(line));
        }
    }

    /// The next word of a line whose row is quantized.
    int nextWord(const Line &line, std::size_t row)
    {
        const Product &output = m_network.m_output;
        const auto count = m_options.shortlist ? line.candidates.size() : std::size_t(output.weights.rows);
        m_scores.resize(count);
        m_kernel.multiply({.left = m_quantized.data() + row * std::size_t(m_width),
                           .rows = 1,
                           .scales = m_scales.data() + row,
                           .right = output.weights.values,
                           .rightRows = m_options.shortlist ? line.candidates.data() : nullptr,
                           .columns = int(count),
                           .depth = m_width,
                           .bias = m_options.shortlist ? line.bias.data() : output.bias.data()},
                          m_scores.data());
        const auto wordAt = [&](std::size_t i) { return m_options.shortlist ? int(line.candidates[i]) : int(i); };
        int best = m_options.endWord;
        float bestScore = std::numeric_limits<float>::lowest();
        for (std::size_t i = 0; i < count; ++i) {
            if (m_scores[i] > bestScore && wordAt(i) != m_options.unknownWord) {
                bestScore = m_scores[i];
                best = wordAt(i);
            }
        }
        return best;
    }

    /// One step of a layer for all lines.
    void decodeLayer(std::size_t index, Numbers &rows, const Starts &starts)
    {
        const DecoderLayer &layer = m_network.m_decoder[index];
        multiply(rows, starts, layer.candidate, m_inner);
        multiply(rows, starts, layer.forget, m_added);
        for (std::size_t l = 0; l < m_lines.size(); ++l) {
            const auto start = l * std::size_t(m_width);
            m_floats.advanceCell(m_lines[l].cells[index].data(), m_added.data() + start, m_inner.data() + start,
                                 m_width);
        }
        addAndNormalize(rows, m_added, layer.norm);

        multiply(rows, starts, layer.attention.query, m_inner);
        m_attended.resize(rows.size());
        for (std::size_t l = 0; l < m_lines.size(); ++l) {
            const auto at = std::ptrdiff_t(l) * m_width;
            attend(m_inner.data() + at, m_contexts[index].keys, m_contexts[index].values, m_lines[l].sentence,
                   m_attended.data() + at);
        }
        multiply(m_attended, starts, layer.attention.output, m_added);
        addAndNormalize(rows, m_added, layer.attention.norm);
        feedForward(rows, starts, layer.feedForward);
    }

    std::vector<WordTranslation> decode()
    {
        startDecoding();
        std::vector<WordTranslation> translations(m_sentences.size());
        Numbers rows;
        for (int position = 0; !m_lines.empty(); ++position) {
            if (!isWanted())
                return {};
            rows.assign(m_lines.size() * std::size_t(m_width), 0.F);
            Starts starts(m_lines.size() + 1);
            for (std::size_t l = 0; l < m_lines.size(); ++l) {
                starts[l + 1] = int(l + 1);
                float *const row = rows.data() + l * std::size_t(m_width);
                const auto &words = translations[m_lines[l].sentence].words;
                if (!words.empty())
                    embed(m_network.m_targetWords, words.back(), row);
                m_network.addPosition(position, row);
            }
            for (std::size_t layer = 0; layer < m_network.m_decoder.size(); ++layer)
                decodeLayer(layer, rows, starts);

            quantize(rows, starts, m_network.m_output, m_width);
            std::vector<Line> open;
            for (std::size_t l = 0; l < m_lines.size(); ++l) {
                WordTranslation &translation = translations[m_lines[l].sentence];
                const int word = nextWord(m_lines[l], l);
                translation.isComplete = word == m_options.endWord;
                if (!translation.isComplete)
                    translation.words.push_back(word);
                if (!translation.isComplete && translation.words.size() < m_lines[l].longest)
                    open.push_back(std::move(m_lines[l]));
            }
            m_lines = std::move(open);
        }
        return translations;
    }

    const StudentNetwork &m_network;
    const std::vector<std::vector<int>> &m_sentences;
    const Options &m_options;
    const Int8Kernel &m_kernel;
    const FloatOperations &m_floats = floatOperations().front();
    const int m_width;
    Starts m_starts; ///< of the source's words
    Numbers m_encoded;
    std::vector<Context> m_contexts; ///< per layer of the decoder
    std::vector<Line> m_lines;       ///< those that haven't ended
    // Kept between products, so that memory is allocated once.
    std::vector<std::int8_t> m_quantized;
    Numbers m_scales;
    Numbers m_inner;
    Numbers m_added;
    Numbers m_attended;
    Numbers m_weights;
    Numbers m_scores;
};

std::vector<WordTranslation> StudentNetwork::translate(const std::vector<std::vector<int>> &sentences,
                                                       const Options &options, const Int8Kernel &kernel) const
{
    return Batch(*this, sentences, options, kernel).run();
}

} // namespace lucentra
