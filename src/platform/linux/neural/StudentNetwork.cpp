#include "StudentNetwork.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// Far above what any model has.
constexpr int mostLayers = 64;
constexpr int largestWidth = 16384;
/// Vectors of more positions are computed when they are needed.
constexpr int preparedPositions = 256;

/// A setting of the network, and the values that this implementation has.
struct SettingRow
{
    QLatin1StringView name;
    QList<QStringView> accepted;
    bool mayBeMissing = true;
};

/// Names the first setting that asks for something else.
std::optional<QString> unsupportedSetting(const QMap<QString, QString> &settings)
{
    const std::array rows{
        SettingRow{"type"_L1, {u"transformer"}, false},
        SettingRow{"dec-cell"_L1, {u"ssru"}, false},
        SettingRow{"transformer-decoder-autoreg"_L1, {u"rnn"}, false},
        SettingRow{"transformer-preprocess"_L1, {u""}},
        SettingRow{"transformer-postprocess"_L1, {u"dan"}, false},
        SettingRow{"transformer-postprocess-emb"_L1, {u"d"}},
        SettingRow{"transformer-postprocess-top"_L1, {u""}},
        SettingRow{"transformer-ffn-activation"_L1, {u"relu"}, false},
        SettingRow{"transformer-ffn-depth"_L1, {u"2"}},
        SettingRow{"transformer-decoder-ffn-depth"_L1, {u"0", u"2"}},
        SettingRow{"layer-normalization"_L1, {u"false"}},
        SettingRow{"transformer-no-projection"_L1, {u"false"}},
        SettingRow{"transformer-no-bias"_L1, {u"false"}},
        SettingRow{"transformer-no-affine"_L1, {u"false"}},
        SettingRow{"transformer-rnn-projection"_L1, {u"false"}},
        SettingRow{"transformer-tied-layers"_L1, {u""}},
        SettingRow{"transformer-train-position-embeddings"_L1, {u"false"}},
        SettingRow{"dec-cell-base-depth"_L1, {u"1", u"2"}},
        SettingRow{"lemma-dim-emb"_L1, {u"0"}},
        SettingRow{"factors-dim-emb"_L1, {u"0"}},
        SettingRow{"ulr"_L1, {u"false"}},
        SettingRow{"right-left"_L1, {u"false"}},
        SettingRow{"output-omit-bias"_L1, {u"false"}},
    };
    for (const SettingRow &row : rows) {
        const auto found = settings.constFind(row.name);
        const bool isAccepted = found == settings.cend() ? row.mayBeMissing : row.accepted.contains(*found);
        if (!isAccepted)
            return row.name + u": "_s + (found == settings.cend() ? u"-"_s : found->left(100));
    }
    return std::nullopt;
}

} // namespace

/// Collects the parameters and remembers the first that is missing or doesn't fit.
class StudentNetwork::Loader
{
public:
    explicit Loader(const NetworkFile &file)
        : m_file(file)
        , m_hasActivations(file.number(u"encoder_l1_self_Wq_QuantMultA"_s).has_value())
    {
    }

    const std::optional<QString> &wrong() const { return m_wrong; }
    void fail(const QString &name)
    {
        if (!m_wrong)
            m_wrong = name;
    }

    std::vector<float> numbers(const QString &name, int length)
    {
        auto found = m_file.numbers(name, length);
        if (found.empty())
            fail(name);
        return found;
    }

    float activation(const QString &name)
    {
        if (!m_hasActivations)
            return 0;
        auto number = m_file.number(name + u"_QuantMultA"_s);
        if (!number && name == u"Wemb")
            number = m_file.number(u"none_QuantMultA"_s); // an older name
        if (!number || !std::isfinite(*number) || *number <= 0)
            fail(name + u"_QuantMultA"_s);
        return number.value_or(0);
    }

    Product product(const QString &weights, const QString &bias, int inputs, int outputs)
    {
        Product product;
        const auto found = m_file.weights(weights, inputs, outputs);
        if (!found || found->rows > largestWidth) {
            fail(weights);
            return product;
        }
        product.weights = *found;
        product.activation = activation(weights);
        if (!bias.isEmpty())
            product.bias = numbers(bias, found->rows);
        return product;
    }

    Norm norm(const QString &name, int width)
    {
        return {.scale = numbers(name + u"_ln_scale"_s, width), .bias = numbers(name + u"_ln_bias"_s, width)};
    }

    Attention attention(const QString &name, int width)
    {
        const auto part = [&](QChar letter) {
            return product(name + u"_W"_s + letter, name + u"_b"_s + letter, width, width);
        };
        return {.query = part(u'q'),
                .key = part(u'k'),
                .value = part(u'v'),
                .output = part(u'o'),
                .norm = norm(name + u"_Wo"_s, width)};
    }

    FeedForward feedForward(const QString &name, int width)
    {
        FeedForward layer{.inner = product(name + u"_W1"_s, name + u"_b1"_s, width, 0)};
        layer.outer = product(name + u"_W2"_s, name + u"_b2"_s, std::max(1, layer.inner.weights.rows), width);
        layer.norm = norm(name + u"_ffn"_s, width);
        return layer;
    }

private:
    const NetworkFile &m_file;
    const bool m_hasActivations;
    std::optional<QString> m_wrong;
};

tl::expected<StudentNetwork, NeuralModelError> StudentNetwork::make(const NetworkFile &file)
{
    using Kind = NeuralModelError::Kind;
    const QMap<QString, QString> &settings = file.settings();
    if (const auto setting = unsupportedSetting(settings))
        return tl::unexpected(NeuralModelError{Kind::Unsupported, *setting});
    StudentNetwork network;
    network.m_width = settings.value(u"dim-emb"_s).toInt();
    network.m_heads = settings.value(u"transformer-heads"_s).toInt();
    const int encoderDepth = settings.value(u"enc-depth"_s).toInt();
    const int decoderDepth = settings.value(u"dec-depth"_s).toInt();
    const int width = network.m_width;
    if (width < 4 || width > largestWidth || width % 2 != 0 || network.m_heads < 1 || width % network.m_heads != 0 ||
        encoderDepth < 1 || encoderDepth > mostLayers || decoderDepth < 1 || decoderDepth > mostLayers)
        return tl::unexpected(NeuralModelError{Kind::Damaged, networkSettingsName});

    Loader loader(file);
    const auto words = [&](const QString &name) {
        const auto found = file.embeddings(name);
        if (!found || found->columns != width)
            loader.fail(name);
        return found.value_or(Int8Matrix{});
    };
    const bool isShared =
        settings.value(u"tied-embeddings-all"_s) == u"true" || settings.value(u"tied-embeddings-src"_s) == u"true";
    const QString targetName = isShared ? u"Wemb"_s : u"decoder_Wemb"_s;
    network.m_sourceWords = words(isShared ? u"Wemb"_s : u"encoder_Wemb"_s);
    network.m_targetWords = words(targetName);
    network.m_output = {.weights = network.m_targetWords,
                        .activation = loader.activation(targetName),
                        .bias = loader.numbers(u"decoder_ff_logit_out_b"_s, network.m_targetWords.rows)};
    for (int i = 1; i <= encoderDepth && !loader.wrong(); ++i) {
        const QString layer = u"encoder_l"_s + QString::number(i);
        network.m_encoder.push_back({.attention = loader.attention(layer + u"_self"_s, width),
                                     .feedForward = loader.feedForward(layer + u"_ffn"_s, width)});
    }
    for (int i = 1; i <= decoderDepth && !loader.wrong(); ++i) {
        const QString layer = u"decoder_l"_s + QString::number(i);
        const QString cell = layer + u"_rnn"_s;
        network.m_decoder.push_back({.candidate = loader.product(cell + u"_W"_s, {}, width, width),
                                     .forget = loader.product(cell + u"_Wf"_s, cell + u"_bf"_s, width, width),
                                     .norm = loader.norm(cell + u"_ffn"_s, width),
                                     .attention = loader.attention(layer + u"_context"_s, width),
                                     .feedForward = loader.feedForward(layer + u"_ffn"_s, width)});
    }
    if (loader.wrong())
        return tl::unexpected(NeuralModelError{Kind::Damaged, *loader.wrong()});
    std::vector<float> positions(std::size_t(preparedPositions) * std::size_t(width));
    for (int position = 0; position < preparedPositions; ++position)
        network.addPosition(position, positions.data() + std::ptrdiff_t(position) * width);
    network.m_positions = std::move(positions);
    return network;
}

/// Adds the vector that stands for a place in the sentence: sines in the first half, cosines in the second.
void StudentNetwork::addPosition(int position, float *vector) const
{
    const auto start = std::size_t(position) * std::size_t(m_width);
    if (start < m_positions.size()) {
        for (int i = 0; i < m_width; ++i)
            vector[i] += m_positions[start + std::size_t(i)];
        return;
    }
    const int half = m_width / 2;
    const float step = std::log(10000.F) / float(half - 1);
    for (int i = 0; i < half; ++i) {
        const float angle = float(position) * std::exp(float(i) * -step);
        vector[i] += std::sin(angle);
        vector[half + i] += std::cos(angle);
    }
}

} // namespace lucentra
