#pragma once

#include "OnDeviceTranslationService.h"

#include <QList>
#include <QStringList>

namespace lucentra {

/// What came back from this machine.
struct OnDeviceTranslations
{
    QStringList texts;               ///< one a source text: its translation, or itself
    QList<OnDeviceOutcome> outcomes; ///< what became of each; may be empty where nothing was tried
    bool isCancelled = false;        ///< nobody wanted it any more before all was translated
    bool isStripped = false;         ///< the system installs programs without their translations
    QStringList addableBy;           ///< packages that would add phrases or language pairs
};

} // namespace lucentra
