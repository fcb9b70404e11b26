#pragma once

#include <QString>
#include <QStringList>

namespace lucentra {

class LocalizationManager;
struct OnDeviceTranslations;

/// Why nothing came back that is other than its source, and what helps, as one sentence or two; empty where something
/// did, or where there was nothing to translate. Any thread.
QString onDeviceNote(const QStringList &sources, const OnDeviceTranslations &translations,
                     const LocalizationManager &texts);

} // namespace lucentra
