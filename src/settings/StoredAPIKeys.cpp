#include "StoredAPIKeys.h"

#include "InstallCommand.h"
#include "KeychainStore.h"
#include "SecretStorage.h"
#include "SettingsStore.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// `plaintext` must be read before the keyring: if another process moves the key in between, it is found in one of
/// them.
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

Result<QString> loadStoredAPIKey(SettingsStore &settings, const KeychainStore &keychain, const QString &account,
                                 const QString &legacyKey)
{
    const QString plaintext = settings.value(legacyKey).toString();
    const auto kept = keychain.read(account);
    if (kept)
        return reconcile(settings, keychain, account, legacyKey, plaintext, *kept);
    return plaintext.isEmpty() ? Result<QString>(tl::unexpected(kept.error())) : plaintext;
}

QString keychainAdvice(const Failure &failure, const std::function<QString(const QString &)> &localized)
{
    switch (SecretStorageProblem(failure.code)) {
    case SecretStorageProblem::Locked:
    case SecretStorageProblem::NoKeyring:
        return localized(u"鑰匙圈已鎖定。請在系統詢問時解鎖；API Key 會在下次嘗試時讀取或存入。"_s);
    case SecretStorageProblem::NoBus:
    case SecretStorageProblem::NoService:
        return localized(u"這部電腦沒有鑰匙圈服務，無法保存 API Key。請安裝後重新登入：%@"_s)
            .replace(u"%@"_s, installCommand({u"gnome-keyring"_s}));
    case SecretStorageProblem::NoAnswer:
    case SecretStorageProblem::NoSecret:
        break;
    }
    return localized(u"鑰匙圈沒有回應，API Key 尚未讀取或存入。請稍後再試。"_s);
}

StoredAPIKeys loadStoredAPIKeys(SettingsStore &settings, const KeychainStore &keychain, const QStringList &accounts)
{
    QHash<QString, QString> plaintexts;
    for (const QString &account : accounts)
        plaintexts.insert(account, settings.value(account).toString());
    const auto read = keychain.readAll();
    if (!read)
        return {.keys = plaintexts, .failure = read.error()};
    StoredAPIKeys stored;
    for (const QString &account : accounts) {
        const auto value = read->constFind(account);
        stored.keys.insert(account, reconcile(settings, keychain, account, account, plaintexts.value(account),
                                              value == read->cend() ? std::nullopt : std::optional(value.value())));
    }
    return stored;
}

} // namespace lucentra
