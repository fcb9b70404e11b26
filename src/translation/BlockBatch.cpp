#include "BlockBatch.h"

#include "Json.h"
#include "TranslationError.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The position that an "id" names, or nullopt.
std::optional<qsizetype> blockPosition(const QJsonValue &id, qsizetype blockCount)
{
    const double number = id.toDouble(-1); // -1 if it isn't a number
    if (number < 0 || number >= double(blockCount) || std::trunc(number) != number)
        return std::nullopt;
    return qsizetype(number);
}

} // namespace

QList<QStringList> blockBatches(const QStringList &blocks)
{
    // A translation has at most about as many tokens as its source has characters. An ideograph, which may become a
    // word, has three bytes.
    constexpr qsizetype tokensOfAnElement = 16; // brackets, names and number
    QList<QStringList> batches{{}};
    qsizetype tokens = 0;
    for (const QString &block : blocks) {
        const qsizetype more = block.toUtf8().size() + tokensOfAnElement;
        if (!batches.last().isEmpty() && tokens + more > mostOutputTokens) {
            batches.append(QStringList());
            tokens = 0;
        }
        batches.last().append(block);
        tokens += more;
    }
    return batches;
}

std::optional<QString> blockBatchInput(const QStringList &blocks)
{
    QJsonArray batch;
    for (const QString &block : blocks) {
        if (!block.isValidUtf16())
            return std::nullopt;
        batch.append(QJsonObject{{u"id"_s, batch.size()}, {u"text"_s, block}});
    }
    return QString::fromUtf8(jsonBytes(batch));
}

QString withoutFences(const QString &output)
{
    QString text = output.trimmed();
    text.remove(u"```json"_s);
    text.remove(u"```"_s);
    return text.trimmed();
}

QStringList matchedTranslations(const QJsonArray &elements, const QStringList &blocks)
{
    QStringList translations = blocks;
    for (const QJsonValue element : elements) {
        const auto position = blockPosition(element["id"_L1], blocks.size());
        const QJsonValue text = element["text"_L1];
        if (position && text.isString())
            translations[*position] = text.toString();
    }
    return translations;
}

QStringList parseBlockTranslations(const QString &output, const QStringList &blocks)
{
    const auto document = parseJson(withoutFences(output).toUtf8());
    if (!document)
        throw TranslationError(u"JSON"_s, -1, u"回應內容不是有效的 JSON"_s);
    const auto elements = objectsIn((*document)["translations"_L1]);
    if (!elements)
        throw invalidResponse(u"AI 翻譯"_s);
    return matchedTranslations(*elements, blocks);
}

} // namespace lucentra
