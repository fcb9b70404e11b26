#pragma once

#include "LanguageIdentifier.h"
#include "OnDeviceTranslationService.h"
#include "PhraseStore.h"

#include <memory>

namespace lucentra {

/// What translates on this computer.
struct OnDeviceEngine
{
    std::unique_ptr<LanguageIdentifier> identifier;
    std::unique_ptr<OnDeviceTranslationService> translation;
};

/// The engine of this system. Another way to translate is one more layer in the list there.
OnDeviceEngine makeOnDeviceEngine(BuildPatience patience = {});

} // namespace lucentra
