#pragma once

#include <QString>
#include <QStringList>

namespace lucentra {

class LocalizationManager;
struct OnDeviceTranslations;

/// One or two sentences on why no text was translated and what helps. Empty if a text was translated or there was
/// nothing to translate. Any thread.
QString onDeviceNote(const QStringList &sources, const OnDeviceTranslations &translations,
                     const LocalizationManager &texts);

} // namespace lucentra
