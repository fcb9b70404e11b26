#include "OnDeviceEngine.h"

#include "ApertiumTranslation.h"
#include "LayeredTranslation.h"
#include "NeuralTranslation.h"
#include "PhraseTranslation.h"
#include "ScreenLanguageIdentifier.h"

#include <vector>

namespace lucentra {

OnDeviceEngine makeOnDeviceEngine(BuildPatience patience)
{
    const auto phrases =
        std::make_shared<PhraseStore>(CatalogueFolders::ofThisSystem(), PhraseStore::userCachePath(), patience);
    const InstalledModels models(InstalledModels::searchFoldersOfThisSystem());
    // Languages are identified better with the phrases; but nobody waits for them if a model can translate.
    const auto phrasesToIdentify = [phrases, models] {
        return models.list().isEmpty() || !phrases->isCollecting() ? phrases->file() : nullptr;
    };
    // Translators' own words are trusted more than what a machine composes.
    std::vector<std::unique_ptr<OnDeviceTranslationService>> layers;
    layers.push_back(std::make_unique<PhraseTranslation>(phrases));
    layers.push_back(std::make_unique<NeuralTranslation>(models));
    layers.push_back(ApertiumTranslation::ofThisSystem());
    return {.identifier = std::make_unique<ScreenLanguageIdentifier>(phrasesToIdentify),
            .translation = std::make_unique<LayeredTranslation>(std::move(layers))};
}

} // namespace lucentra
