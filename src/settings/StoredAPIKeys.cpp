#include "StoredAPIKeys.h"

#include "KeychainStore.h"
#include "SettingsStore.h"

namespace lucentra {

namespace {

QString reconcile(SettingsStore &settings, const KeychainStore &keychain, const QString &account,
                  const QString &legacyKey, const std::optional<QString> &kept)
{
    if (kept) {
        if (settings.contains(legacyKey))
            settings.remove(legacyKey);
        return *kept;
    }
    QString plaintext = settings.value(legacyKey).toString();
    if (!plaintext.isEmpty() && keychain.saveString(plaintext, account))
        settings.remove(legacyKey);
    return plaintext;
}

} // namespace

QString loadStoredAPIKey(SettingsStore &settings, const KeychainStore &keychain, const QString &account,
                         const QString &legacyKey)
{
    return reconcile(settings, keychain, account, legacyKey, keychain.readString(account));
}

QHash<QString, QString> loadStoredAPIKeys(SettingsStore &settings, const KeychainStore &keychain,
                                          const QStringList &accounts)
{
    const QHash<QString, QString> kept = keychain.readAllStrings();
    QHash<QString, QString> keys;
    for (const QString &account : accounts) {
        const auto value = kept.constFind(account);
        keys.insert(account, reconcile(settings, keychain, account, account,
                                       value == kept.cend() ? std::nullopt : std::optional(value.value())));
    }
    return keys;
}

} // namespace lucentra
