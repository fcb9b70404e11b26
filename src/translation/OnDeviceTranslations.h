#pragma once

#include "OnDeviceTranslationService.h"

#include <QList>
#include <QStringList>

namespace lucentra {

/// The result of a translation on this computer.
struct OnDeviceTranslations
{
    QStringList texts;               ///< one per source text: its translation, or the text itself
    QList<OnDeviceOutcome> outcomes; ///< one per source text; empty if nothing was tried
    bool isStripped = false;         ///< the system installs programs without their translations
    QStringList addableBy;           ///< packages that would add phrases or language pairs
    QList<LanguagePair> lackingModels; ///< pairs whose translation models could be downloaded
};

} // namespace lucentra
