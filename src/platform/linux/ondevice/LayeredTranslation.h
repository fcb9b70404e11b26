#pragma once

#include "OnDeviceTranslationService.h"

#include <memory>
#include <vector>

namespace lucentra {

/// Several services as one, the most trusted first: each text goes to the first that can translate it. A text waits for
/// data that a service is still building only if no other service can translate it.
class LayeredTranslation : public OnDeviceTranslationService
{
public:
    explicit LayeredTranslation(std::vector<std::unique_ptr<OnDeviceTranslationService>> layers);

    void prepare() override;
    void cancel() override;
    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override;
    bool isPhrase(const LanguagePair &pair, const QString &text) override;
    QList<OnDeviceAddition> additions(const LanguagePair &pair) override;
    QList<OnDeviceServiceStatus> status() override;
    QList<OnDeviceServiceStatus> currentStatus() override;

private:
    const std::vector<std::unique_ptr<OnDeviceTranslationService>> m_layers;
};

} // namespace lucentra
