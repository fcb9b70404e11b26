#include "LayeredTranslation.h"

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

/// How much an outcome helps the user: a translation most, then one that a later try may bring.
int helpfulness(OnDeviceOutcome::Kind kind)
{
    using Kind = OnDeviceOutcome::Kind;
    switch (kind) {
    case Kind::Translated:
        return 5;
    case Kind::NotReady:
        return 4;
    case Kind::SameLanguage:
        return 3;
    case Kind::UnknownPhrase:
        return 2;
    case Kind::Undetermined:
        return 1;
    case Kind::PairUnavailable:
        break;
    }
    return 0;
}

} // namespace

LayeredTranslation::LayeredTranslation(std::vector<std::unique_ptr<OnDeviceTranslationService>> layers)
    : m_layers(std::move(layers))
{
}

QList<OnDeviceOutcome> LayeredTranslation::translate(const LanguagePair &pair, const QStringList &texts,
                                                     const std::function<bool()> &isWanted)
{
    using Kind = OnDeviceOutcome::Kind;
    QList<OnDeviceOutcome> outcomes(texts.size());
    for (const auto &layer : m_layers) {
        if (layer->availability(pair) != PairAvailability::Available)
            continue;
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
            if (helpfulness(found[i].kind) > helpfulness(outcomes[open[i]].kind))
                outcomes[open[i]] = found[i];
        }
    }
    return outcomes;
}

PairAvailability LayeredTranslation::availability(const LanguagePair &pair)
{
    auto best = PairAvailability::Unavailable;
    for (const auto &layer : m_layers) {
        const auto one = layer->availability(pair);
        if (one == PairAvailability::Available)
            return one;
        if (one == PairAvailability::Addable)
            best = one;
    }
    return best;
}

QList<OnDeviceServiceStatus> LayeredTranslation::status()
{
    QList<OnDeviceServiceStatus> all;
    for (const auto &layer : m_layers)
        all += layer->status();
    return all;
}

} // namespace lucentra
