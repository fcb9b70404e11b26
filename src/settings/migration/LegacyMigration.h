#pragma once

#include "Callback.h"

#include <QString>

namespace lucentra {

class SettingsStore;

/// Where a former version of the program may have left its data, and where this one stores its own.
struct LegacyFolders
{
    QString home;       ///< the user's home folder from the user database, not from the environment
    QString configHome; ///< of preferences on this desktop
    QString dataHome;   ///< of data on this desktop

    static LegacyFolders ofUser();
};

/// Copies a former version's data that this version lacks: the history file if there is none, and each setting whose
/// key is absent. The first source that has the data wins. API keys are never copied, and the sources never change, so
/// this may run at every start.
///
/// Sources that are missing, unreadable, no regular file, too large or malformed are skipped; a history file that can't
/// be copied is logged. Blocks while a few small files are read.
void migrateLegacyData(SettingsStore &settings, const QString &historyFile, const LegacyFolders &folders,
                       const DiagnosticLine &diagnostics);

} // namespace lucentra
