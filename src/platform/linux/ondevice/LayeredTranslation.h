#pragma once

#include "OnDeviceTranslationService.h"

#include <memory>
#include <vector>

namespace lucentra {

/// Several services as one: each text goes to the first that can translate it. They stand in the order in which they
/// are trusted.
class LayeredTranslation : public OnDeviceTranslationService
{
public:
    explicit LayeredTranslation(std::vector<std::unique_ptr<OnDeviceTranslationService>> layers);

    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override;
    PairAvailability availability(const LanguagePair &pair) override;
    QList<OnDeviceServiceStatus> status() override;

private:
    const std::vector<std::unique_ptr<OnDeviceTranslationService>> m_layers;
};

} // namespace lucentra
