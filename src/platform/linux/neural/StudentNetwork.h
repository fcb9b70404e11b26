#pragma once

#include "Int8Product.h"
#include "NetworkFile.h"
#include "Shortlist.h"

#include <functional>
#include <span>
#include <vector>

namespace lucentra {

/// A translation of a sentence as numbers of words.
struct WordTranslation
{
    std::vector<int> words;  ///< without the end of the sentence
    bool isComplete = false; ///< whether the network ended it; otherwise it was cut at the longest length
};

/// A small network for translation: a transformer's encoder, and a decoder whose state is a simple recurrent unit (SSRU).
/// Any thread, concurrently. The bytes of its `NetworkFile` have to stay.
class StudentNetwork
{
public:
    static tl::expected<StudentNetwork, NeuralModelError> make(const NetworkFile &file);

    int sourceWords() const { return m_sourceWords.rows; }
    int targetWords() const { return m_targetWords.rows; }
    /// Whether both languages have one table of words.
    bool hasSharedWords() const { return m_sourceWords.values == m_targetWords.values; }

    struct Options
    {
        int endWord = 0;
        int unknownWord = 1;    ///< never chosen
        double lengthFactor = 2; ///< longest translation per word of the source; the end counts on both sides
        int leastLength = 0;    ///< how long each translation may be, whatever the factor says
        const Shortlist *shortlist = nullptr; ///< null: all words are searched
        std::function<bool()> isWanted;       ///< asked often; null means always
    };
    /// Translates sentences, each of at least one word, that end in the end of the sentence. A translation doesn't depend
    /// on what else is translated with it. Returns nothing once `isWanted` returns false.
    std::vector<WordTranslation> translate(const std::vector<std::vector<int>> &sentences, const Options &options,
                                           const Int8Kernel &kernel = int8Kernels().front()) const;

private:
    struct Product
    {
        Int8Matrix weights;
        float activation = 0; ///< multiplier of the input; 0 if it is computed from each input
        std::vector<float> bias;
    };
    struct Norm
    {
        std::vector<float> scale;
        std::vector<float> bias;
    };
    struct Attention
    {
        Product query, key, value, output;
        Norm norm;
    };
    struct FeedForward
    {
        Product inner, outer;
        Norm norm;
    };
    struct EncoderLayer
    {
        Attention attention;
        FeedForward feedForward;
    };
    struct DecoderLayer
    {
        Product candidate, forget;
        Norm norm;
        Attention attention;
        FeedForward feedForward;
    };
    class Loader;
    class Batch;

    void addPosition(int position, float *vector) const;

    int m_width = 0; ///< numbers per word
    int m_heads = 1;
    Int8Matrix m_sourceWords;
    Product m_output; ///< its weights are the embeddings of the target
    Int8Matrix m_targetWords;
    std::vector<EncoderLayer> m_encoder;
    std::vector<DecoderLayer> m_decoder;
    std::vector<float> m_positions; ///< vectors of the first positions
};

} // namespace lucentra
