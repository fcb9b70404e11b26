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
    // Translators' own words are trusted more than what a machine composes.
    std::vector<std::unique_ptr<OnDeviceTranslationService>> layers;
    layers.push_back(std::make_unique<PhraseTranslation>(phrases));
    layers.push_back(
        std::make_unique<NeuralTranslation>(InstalledModels(InstalledModels::searchFoldersOfThisSystem())));
    layers.push_back(ApertiumTranslation::ofThisSystem());
    return {.identifier = std::make_unique<ScreenLanguageIdentifier>([phrases] { return phrases->file(); }),
            .translation = std::make_unique<LayeredTranslation>(std::move(layers))};
}

} // namespace lucentra
