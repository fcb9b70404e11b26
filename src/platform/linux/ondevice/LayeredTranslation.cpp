#include "LayeredTranslation.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace lucentra {

LayeredTranslation::LayeredTranslation(std::vector<std::unique_ptr<OnDeviceTranslationService>> layers)
    : m_layers(std::move(layers))
{
}

void LayeredTranslation::prepare()
{
    for (const auto &layer : m_layers)
        layer->prepare();
}

void LayeredTranslation::cancel()
{
    for (const auto &layer : m_layers)
        layer->cancel();
}

QList<OnDeviceOutcome> LayeredTranslation::translate(const LanguagePair &pair, const QStringList &texts,
                                                     const std::function<bool()> &isWanted)
{
    using Kind = OnDeviceOutcome::Kind;
    using Translate = decltype(&OnDeviceTranslationService::translate);
    QList<OnDeviceOutcome> outcomes(texts.size());
    // Asks a layer for those of the texts that aren't translated yet. Returns those that it may know later.
    const auto ask = [&](OnDeviceTranslationService &layer, const QList<qsizetype> &chosen, Translate how) {
        QList<qsizetype> open;
        QStringList openTexts;
        for (const qsizetype i : chosen) {
            if (outcomes[i].kind != Kind::Translated) {
                open.append(i);
                openTexts.append(texts[i]);
            }
        }
        QList<qsizetype> later;
        if (open.isEmpty())
            return later;
        const QList<OnDeviceOutcome> found = (layer.*how)(pair, openTexts, isWanted);
        for (qsizetype i = 0; i < std::min(open.size(), found.size()); ++i) {
            if (found[i].kind == Kind::NotReady)
                later.append(open[i]);
            else if (found[i].kind > outcomes[open[i]].kind)
                outcomes[open[i]] = found[i];
        }
        return later;
    };
    QList<qsizetype> all(texts.size());
    std::iota(all.begin(), all.end(), qsizetype(0));
    std::vector<QList<qsizetype>> waiting;
    for (const auto &layer : m_layers)
        waiting.push_back(ask(*layer, all, &OnDeviceTranslationService::translateAtOnce));
    for (std::size_t i = 0; i < m_layers.size(); ++i) {
        for (const qsizetype text : ask(*m_layers[i], waiting[i], &OnDeviceTranslationService::translate)) {
            if (outcomes[text].kind != Kind::Translated)
                outcomes[text] = {.kind = Kind::NotReady};
        }
    }
    return outcomes;
}

bool LayeredTranslation::isPhrase(const LanguagePair &pair, const QString &text)
{
    return std::any_of(m_layers.begin(), m_layers.end(),
                       [&](const auto &layer) { return layer->isPhrase(pair, text); });
}

QList<OnDeviceAddition> LayeredTranslation::additions(const LanguagePair &pair)
{
    QList<OnDeviceAddition> all;
    for (const auto &layer : m_layers)
        all += layer->additions(pair);
    return all;
}

QList<OnDeviceServiceStatus> LayeredTranslation::status()
{
    QList<OnDeviceServiceStatus> all;
    for (const auto &layer : m_layers)
        all += layer->status();
    return all;
}

QList<OnDeviceServiceStatus> LayeredTranslation::currentStatus()
{
    QList<OnDeviceServiceStatus> all;
    for (const auto &layer : m_layers)
        all += layer->currentStatus();
    return all;
}

} // namespace lucentra
