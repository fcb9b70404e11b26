#pragma once

#include "OnDeviceTranslationService.h"

namespace lucentra {

class PhraseStore;

/// Translates by the phrases that this computer's programs know.
class PhraseMemory : public OnDeviceTranslationService
{
public:
    static constexpr auto serviceName = "phrases";

    /// The store must outlive it.
    explicit PhraseMemory(PhraseStore &store);

    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override;
    PairAvailability availability(const LanguagePair &pair) override;
    QList<OnDeviceServiceStatus> status() override;

private:
    PhraseStore &m_store;
};

} // namespace lucentra
