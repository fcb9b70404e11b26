#pragma once

#include "Result.h"

#include <QString>

#include <functional>

namespace lucentra {

class LocalizationManager;
class SettingsStore;
class TranslationManager;

/// Whether the selected engine works with what is stored: sends one short sentence the way a pass does. Main thread.
/// Completes once with its translation, cut off if it is far too long, or with what the pane would show, or with a
/// failure of the domain "TranslationConnectionTest" where the service gave nothing back but the sentence itself. The
/// engine of this computer is asked for a common word besides, and fails with its note. What is given must outlive the
/// test.
void testConnection(TranslationManager &manager, const SettingsStore &settings, const LocalizationManager &texts,
                    const std::function<void(Result<QString>)> &completion);

} // namespace lucentra
