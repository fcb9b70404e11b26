#pragma once

#include "AppleTranslationBridge.h"
#include "LayeredTranslation.h"
#include "PhraseStore.h"
#include "ScreenLanguageIdentifier.h"

namespace lucentra {

class MainQueue;

/// What translates on this machine, each part in front of those that stand on it. Main thread makes and destroys it.
struct OnDeviceServices
{
    /// Starts to open or build the memory of phrases, in the background.
    OnDeviceServices(MainQueue &mainQueue, BuildPatience patience);
    ~OnDeviceServices();

    PhraseStore store;
    ScreenLanguageIdentifier identifier;
    LayeredTranslation service;
    AppleTranslationBridge bridge;
};

} // namespace lucentra
