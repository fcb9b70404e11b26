#pragma once

#include "DiagnosticLine.h"

#include <QString>

namespace lucentra {

class SettingsStore;

/// Where the program's former version may have left its data, and where this one keeps its own.
struct LegacyFolders
{
    QString home;       ///< the user's real home folder, whatever the environment says
    QString configHome; ///< of this desktop's preferences
    QString dataHome;   ///< of this desktop's data

    static LegacyFolders ofUser();
};

/// Copies what the former version has left and this one lacks: the history file while there is none, and each setting
/// while its key is absent; the first source that has something wins. API keys are never copied, and nothing changes at
/// the old places, so that it may run at every start.
///
/// Sources that are missing, unreadable, no regular file, too large or malformed are skipped; only a history file that
/// can't be copied is a line in the log. Blocks for as long as a few small files are read.
void migrateLegacyData(SettingsStore &settings, const QString &historyFile, const LegacyFolders &folders,
                       const DiagnosticLine &diagnostics);

} // namespace lucentra
