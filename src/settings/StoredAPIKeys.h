#pragma once

#include "Result.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace lucentra {

class KeychainStore;
class SettingsStore;

/// The API key of one account, empty where none is stored. The keychain comes first. A plaintext copy of a former
/// version in the settings, under the legacy key, goes away once the keychain holds a value: it is moved there when the
/// keychain has none, and stays in use where that fails. Without such a copy, a keychain that can't be read is a
/// failure: it may hold a key. Blocks as `KeychainStore` does, on any thread.
Result<QString> loadStoredAPIKey(SettingsStore &settings, const KeychainStore &keychain, const QString &account,
                                 const QString &legacyKey);

/// What the user can do about a failure of the keychain: a key of the string tables.
QString keychainAdvice(const Failure &failure);

struct StoredAPIKeys
{
    QHash<QString, QString> keys;   ///< by account; every account has an entry
    std::optional<Failure> failure; ///< of the keychain; there are only the plaintext copies then
};

/// The same for several accounts, whose legacy keys have the same names, by one search of the keychain.
StoredAPIKeys loadStoredAPIKeys(SettingsStore &settings, const KeychainStore &keychain, const QStringList &accounts);

} // namespace lucentra
