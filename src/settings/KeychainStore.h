#pragma once

#include "Callback.h"
#include "Result.h"

#include <QHash>
#include <QString>

#include <optional>

namespace lucentra {

class SecretStorage;

/// The user's API keys: one secret per account, all under one service. Never throws. Each failure is also one
/// diagnostic line: "Keychain ", the operation (讀取, 新增, 更新, 刪除), "失敗 [", the account, "]: " and the system's
/// reason. Has no state; calls block like those of the storage and may be made on any thread.
class KeychainStore
{
public:
    /// The service of the program's API keys.
    static QString apiKeyService();

    KeychainStore(SecretStorage &storage, QString service, DiagnosticLine diagnostics);

    /// The account's value. Returns nullopt if there is none (which isn't a failure) or if it can't be read.
    std::optional<QString> readString(const QString &account) const;
    /// The same, for callers that must distinguish a value that can't be read from a missing one.
    Result<std::optional<QString>> read(const QString &account) const;

    /// All values of the service by account. The diagnostic line of a failed search contains the service in place of
    /// the account. A value that isn't UTF-8 is logged and left out.
    Result<QHash<QString, QString>> readAll() const;

    /// Returns whether the keychain now contains exactly this value or, for an empty one, no item of the account.
    bool saveString(const QString &value, const QString &account) const;
    Result<void> save(const QString &value, const QString &account) const;

    /// Returns whether no item of the account remains.
    bool deleteItem(const QString &account) const;

private:
    Result<void> remove(const QString &account) const;
    void report(const QString &operation, const QString &account, const QString &reason) const;
    std::optional<QString> decode(const QByteArray &secret, const QString &account) const;

    SecretStorage &m_storage;
    const QString m_service;
    const DiagnosticLine m_diagnostics;
};

} // namespace lucentra
