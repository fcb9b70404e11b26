#pragma once

#include "LocalizationManager.h"
#include "SettingsStore.h"

#include <QTemporaryDir>

namespace lucentra {

/// Look-ups that answer every key with itself: the interface language is the keys' own.
struct TestTexts
{
    QTemporaryDir folder;
    SettingsStore settings{folder.filePath(QStringLiteral("preferences.json"))};
    LocalizationManager manager{settings, folder.path(), {QStringLiteral("zh-Hant")}};
};

} // namespace lucentra
