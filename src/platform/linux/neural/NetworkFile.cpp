#include "NetworkFile.h"

#include "SequentialReader.h"

#include <QStringList>

#include <array>
#include <cmath>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr quint64 textType = 0x0101;
constexpr quint64 floatType = 0x0404;
constexpr quint64 int8Type = 0x4101;

// Far above what any model has.
constexpr quint64 mostItems = 4096;
constexpr quint64 longestName = 256;
constexpr quint64 mostDimensions = 4;
constexpr quint64 largestDimension = 1 << 24;

/// Reads YAML that consists of single values and lists of them.
QMap<QString, QString> readSettings(const QString &text)
{
    QMap<QString, QString> settings;
    QString key;
    for (const QString &line : text.split(u'\n')) {
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(u"- ")) {
            settings[key] += (settings[key].isEmpty() ? QString() : u" "_s) + trimmed.sliced(2).trimmed();
            continue;
        }
        const qsizetype colon = trimmed.indexOf(u':');
        if (colon <= 0)
            continue;
        key = trimmed.first(colon);
        QString value = trimmed.sliced(colon + 1).trimmed();
        if (value.startsWith(u'[') && value.endsWith(u']'))
            value = value.sliced(1, value.size() - 2).replace(u',', u' ').simplified();
        else if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
            value = value.sliced(1, value.size() - 2);
        settings[key] = value;
    }
    return settings;
}

} // namespace

tl::expected<NetworkFile, NeuralModelError> NetworkFile::parse(QByteArrayView bytes)
{
    const auto damaged = [](const QString &detail) {
        return tl::unexpected(NeuralModelError{NeuralModelError::Kind::Damaged, detail});
    };
    SequentialReader reader(bytes);
    const auto version = reader.number<quint64>();
    const auto count = reader.number<quint64>();
    if (!reader.isGood() || version != 1 || count > mostItems)
        return damaged(u"header"_s);

    struct Header
    {
        quint64 nameLength, type, dimensions, size;
    };
    std::vector<Header> headers;
    for (quint64 i = 0; i < count && reader.isGood(); ++i) {
        Header header{};
        for (quint64 *field : {&header.nameLength, &header.type, &header.dimensions, &header.size})
            *field = reader.number<quint64>();
        if (header.nameLength < 1 || header.nameLength > longestName || header.dimensions > mostDimensions)
            return damaged(u"header"_s);
        headers.push_back(header);
    }
    std::vector<std::pair<QString, Item>> items;
    for (const Header &header : headers) {
        const QByteArrayView name = reader.take(header.nameLength);
        if (!reader.isGood() || name.back() != '\0')
            return damaged(u"header"_s);
        items.emplace_back(QString::fromLatin1(name.chopped(1)), Item{.type = header.type});
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        auto &[name, item] = items[i];
        quint64 rows = 1;
        quint64 columns = 1; // the last dimension
        for (quint64 d = 0; d < headers[i].dimensions; ++d) {
            const auto dimension = reader.number<qint32>();
            rows *= columns;
            columns = quint64(dimension);
            if (dimension < 1 || rows > largestDimension || columns > largestDimension)
                return damaged(name);
        }
        item.rows = int(rows);
        item.columns = int(columns);
    }
    reader.take(reader.number<quint64>());
    NetworkFile file;
    for (std::size_t i = 0; i < items.size(); ++i) {
        auto &[name, item] = items[i];
        item.data = reader.take(headers[i].size);
        const quint64 elements = quint64(item.rows) * quint64(item.columns);
        const quint64 needed = item.type == int8Type    ? elements + sizeof(float)
                               : item.type == floatType ? elements * sizeof(float)
                               : item.type == textType  ? elements
                                                        : 0;
        if (!reader.isGood() || file.m_items.contains(name) || quint64(item.data.size()) < needed)
            return damaged(name);
        if (needed == 0)
            return tl::unexpected(NeuralModelError{NeuralModelError::Kind::Unsupported,
                                                   name + u": type 0x"_s + QString::number(item.type, 16)});
        if (name == networkSettingsName)
            file.m_settings = readSettings(QString::fromUtf8(item.data.first(qsizetype(qstrnlen(item.data.data(), size_t(item.data.size()))))));
        file.m_items.insert(name, item);
    }
    if (file.m_settings.isEmpty())
        return damaged(networkSettingsName);
    return file;
}

std::optional<Int8Matrix> NetworkFile::matrix(const QString &name, bool isTransposed) const
{
    const Item item = m_items.value(name);
    if (item.type != int8Type)
        return std::nullopt;
    Int8Matrix matrix{.values = reinterpret_cast<const std::int8_t *>(item.data.data()),
                      .rows = isTransposed ? item.columns : item.rows,
                      .columns = isTransposed ? item.rows : item.columns};
    std::memcpy(&matrix.multiplier, item.data.data() + qsizetype(item.rows) * item.columns, sizeof(float));
    return std::isfinite(matrix.multiplier) && matrix.multiplier > 0 ? std::optional(matrix) : std::nullopt;
}

std::optional<Int8Matrix> NetworkFile::weights(const QString &name, int inputs, int outputs) const
{
    const auto found = matrix(name, true);
    const bool fits =
        found && (inputs == 0 || found->columns == inputs) && (outputs == 0 || found->rows == outputs);
    return fits ? found : std::nullopt;
}

std::optional<Int8Matrix> NetworkFile::embeddings(const QString &name) const
{
    return matrix(name, false);
}

std::vector<float> NetworkFile::numbers(const QString &name, int length) const
{
    const Item item = m_items.value(name);
    if (item.type != floatType || qint64(item.rows) * item.columns != length)
        return {};
    std::vector<float> numbers(std::size_t(length), 0.F);
    std::memcpy(numbers.data(), item.data.data(), numbers.size() * sizeof(float));
    return numbers;
}

std::optional<float> NetworkFile::number(const QString &name) const
{
    if (const std::vector<float> single = numbers(name, 1); !single.empty())
        return single.front();
    const auto found = matrix(name, false);
    if (!found || found->rows != 1 || found->columns != 1)
        return std::nullopt;
    return float(found->values[0]) * (1 / found->multiplier);
}

} // namespace lucentra
