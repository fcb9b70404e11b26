#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QMap>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

#include <tl/expected.hpp>

namespace lucentra {

/// Why a translation model can't be used.
struct NeuralModelError
{
    enum class Kind {
        Missing,     ///< a file of the model isn't there, or isn't readable
        Damaged,     ///< a file isn't what its name says, or parts of it don't fit together
        Unsupported, ///< a network of another kind
    };
    Kind kind = Kind::Missing;
    QString detail; ///< which file, parameter or setting

    bool operator==(const NeuralModelError &) const = default;
};

/// A matrix of small integers, `rows` times `columns`, row by row. A weight is its integer divided by `multiplier`.
struct Int8Matrix
{
    const std::int8_t *values = nullptr;
    int rows = 0;
    int columns = 0;
    float multiplier = 1;
};

/// The name of the settings among the parameters.
inline constexpr QLatin1StringView networkSettingsName{"special:model.yml"};

/// The parameters of a network in Marian's binary format, version 1, with 8-bit weights. A view: the bytes have to stay.
class NetworkFile
{
public:
    /// Checks all sizes and places, so that no parameter leaves the bytes.
    static tl::expected<NetworkFile, NeuralModelError> parse(QByteArrayView bytes);

    /// The settings of the network. A list's elements are separated by blanks.
    const QMap<QString, QString> &settings() const { return m_settings; }

    /// The matrix that a product with `inputs` numbers and `outputs` results needs: a row per output. The file holds
    /// weights that way already. A dimension of 0 fits every size.
    std::optional<Int8Matrix> weights(const QString &name, int inputs, int outputs) const;
    /// A table of embeddings, a row per word.
    std::optional<Int8Matrix> embeddings(const QString &name) const;
    /// A vector of floats; empty if there is none of this length.
    std::vector<float> numbers(const QString &name, int length) const;
    /// A single number, stored as a float or as an 8-bit matrix of one element.
    std::optional<float> number(const QString &name) const;

private:
    struct Item
    {
        quint64 type = 0;
        int rows = 0; ///< as the header says, which for weights is the number of inputs
        int columns = 0;
        QByteArrayView data;
    };
    std::optional<Int8Matrix> matrix(const QString &name, bool isTransposed) const;

    QHash<QString, Item> m_items;
    QMap<QString, QString> m_settings;
};

} // namespace lucentra
