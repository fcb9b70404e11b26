#pragma once

#include "Result.h"

#include <QString>

#include <functional>

namespace lucentra {

class LocalizationManager;
class SettingsStore;
class TranslationManager;

/// Tests whether the selected engine works with the stored settings, by translating a short sentence the way a pass
/// does. Completes once with the translation, shortened if it is far too long; with the failure that the pane would
/// show; or with a failure of the domain "TranslationConnectionTest" if the service returned only the sentence itself.
/// The engine of this computer also gets a common word, and its failure is the note that a pass shows.
void testConnection(TranslationManager &manager, const SettingsStore &settings, const LocalizationManager &texts,
                    const std::function<void(Result<QString>)> &completion);

} // namespace lucentra
