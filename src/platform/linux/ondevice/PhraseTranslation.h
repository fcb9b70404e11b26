#pragma once

#include "OnDeviceTranslationService.h"

#include <memory>

namespace lucentra {

class PhraseStore;

/// Translates by the phrases in the catalogues of this computer's programs.
class PhraseTranslation : public OnDeviceTranslationService
{
public:
    explicit PhraseTranslation(std::shared_ptr<PhraseStore> store);

    void prepare() override;
    void cancel() override;
    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override;
    QList<OnDeviceOutcome> translateAtOnce(const LanguagePair &pair, const QStringList &texts,
                                           const std::function<bool()> &isWanted) override;
    bool isPhrase(const LanguagePair &pair, const QString &text) override;
    QList<OnDeviceAddition> additions(const LanguagePair &pair) override;
    QList<OnDeviceServiceStatus> status() override;
    QList<OnDeviceServiceStatus> currentStatus() override;

private:
    const std::shared_ptr<PhraseStore> m_store;
};

} // namespace lucentra
