#pragma once

#include "LoginItem.h"

#include <QString>
#include <QStringList>

namespace lucentra {

/// The login item as an autostart entry of the desktop, "com.tarnby.lucentra.desktop" in the user's autostart folder.
///
/// An entry that the user has disabled in the desktop's own settings (hidden, or disabled for autostart), or whose
/// program doesn't exist any more, counts as not enabled. The user's entry overrides one of the whole system.
class AutostartEntry : public LoginItem
{
public:
    /// `configHome` and `systemConfigFolders` are $XDG_CONFIG_HOME and $XDG_CONFIG_DIRS; `executable` is the program to
    /// start.
    AutostartEntry(const QString &configHome, const QStringList &systemConfigFolders, QString executable);

    /// For this user and this program.
    static AutostartEntry ofUser();

    bool isEnabled() const override;
    Result<void> setEnabled(bool enabled) override;

private:
    Result<void> write(const QString &content);

    const QString m_path; ///< of the user's own entry
    const QStringList m_systemPaths;
    const QString m_executable;
};

} // namespace lucentra
