#pragma once

#include "OnDeviceTranslationService.h"

#include <QList>
#include <QStringList>

namespace lucentra {

/// The result of a translation on this computer.
struct OnDeviceTranslations
{
    QStringList texts;                 ///< one per source text: its translation, or the text itself
    QList<OnDeviceOutcome> outcomes;   ///< one per source text; empty if nothing was tried
    bool isStripped = false;           ///< the system installs programs without their translations
    QList<OnDeviceAddition> additions; ///< what would help, if nothing could be translated; rare languages don't count
};

} // namespace lucentra
