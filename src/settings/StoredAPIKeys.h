#pragma once

#include "Result.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lucentra {

class KeychainStore;
class SettingsStore;

/// The API key of one account, empty if none is stored. A value in the keychain takes precedence. A plaintext copy that
/// a former version left in the settings, under the legacy key, is moved to the keychain if that has no value, else
/// removed; if moving fails, it stays and is used. If there is no such copy, a keychain that can't be read is a
/// failure, since it may contain a key. Blocks like `KeychainStore`, on any thread.
Result<QString> loadStoredAPIKey(SettingsStore &settings, const KeychainStore &keychain, const QString &account,
                                 const QString &legacyKey);

/// What the user can do about a failure of the keychain. `localized` looks up a text key.
QString keychainAdvice(const Failure &failure, const std::function<QString(const QString &)> &localized);

struct StoredAPIKeys
{
    QHash<QString, QString> keys;   ///< by account; contains every account
    std::optional<Failure> failure; ///< of the keychain; `keys` then contains the plaintext copies only
};

/// The same for several accounts by one search of the keychain. Their legacy keys have the same names.
StoredAPIKeys loadStoredAPIKeys(SettingsStore &settings, const KeychainStore &keychain, const QStringList &accounts);

} // namespace lucentra
