#pragma once

#include "LoginItem.h"

#include <QString>
#include <QStringList>

namespace lucentra {

/// The login item as an autostart entry of the desktop, "com.tarnby.lucentra.desktop" in the user's autostart folder.
///
/// An entry that the user has switched off by the desktop's own means (hidden, or disabled for autostart) counts as not
/// enabled, and so does one whose program is gone. One of the whole system is overruled by the user's own.
class AutostartEntry : public LoginItem
{
public:
    /// `configHome` and `systemConfigFolders` are the user's and the system's folders of configuration
    /// ($XDG_CONFIG_HOME, $XDG_CONFIG_DIRS); `executable` is what is to be started.
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
