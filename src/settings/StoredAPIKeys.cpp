#include "StoredAPIKeys.h"

#include "KeychainStore.h"
#include "SettingsStore.h"

namespace lucentra {

namespace {

/// `plaintext` was read before the keyring was: another process that moves it meanwhile is not missed twice.
QString reconcile(SettingsStore &settings, const KeychainStore &keychain, const QString &account,
                  const QString &legacyKey, const QString &plaintext, const std::optional<QString> &kept)
{
    if (kept) {
        if (settings.contains(legacyKey))
            settings.remove(legacyKey);
        return *kept;
    }
    if (!plaintext.isEmpty() && keychain.saveString(plaintext, account))
        settings.remove(legacyKey);
    return plaintext;
}

} // namespace

QString loadStoredAPIKey(SettingsStore &settings, const KeychainStore &keychain, const QString &account,
                         const QString &legacyKey)
{
    const QString plaintext = settings.value(legacyKey).toString();
    return reconcile(settings, keychain, account, legacyKey, plaintext, keychain.readString(account));
}

StoredAPIKeys loadStoredAPIKeys(SettingsStore &settings, const KeychainStore &keychain, const QStringList &accounts)
{
    QHash<QString, QString> plaintexts;
    for (const QString &account : accounts)
        plaintexts.insert(account, settings.value(account).toString());
    const auto read = keychain.readAll();
    const QHash<QString, QString> kept = read.value_or(QHash<QString, QString>());
    StoredAPIKeys stored;
    if (!read)
        stored.failure = read.error();
    for (const QString &account : accounts) {
        const auto value = kept.constFind(account);
        stored.keys.insert(account, reconcile(settings, keychain, account, account, plaintexts.value(account),
                                              value == kept.cend() ? std::nullopt : std::optional(value.value())));
    }
    return stored;
}

} // namespace lucentra
