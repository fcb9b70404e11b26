#include "LayeredTranslation.h"

#include <algorithm>
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
    QList<OnDeviceOutcome> outcomes(texts.size());
    for (const auto &layer : m_layers) {
        QList<qsizetype> open;
        QStringList openTexts;
        for (qsizetype i = 0; i < texts.size(); ++i) {
            if (outcomes[i].kind != Kind::Translated) {
                open.append(i);
                openTexts.append(texts[i]);
            }
        }
        if (open.isEmpty())
            break;
        const QList<OnDeviceOutcome> found = layer->translate(pair, openTexts, isWanted);
        for (qsizetype i = 0; i < std::min(open.size(), found.size()); ++i) {
            if (found[i].kind > outcomes[open[i]].kind)
                outcomes[open[i]] = found[i];
        }
    }
    return outcomes;
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
