#pragma once

#include "DiagnosticLine.h"
#include "Result.h"

#include <QHash>
#include <QString>

#include <optional>

namespace lucentra {

class SecretStorage;

/// Keeps the user's API keys: one secret an account, all under one service. Never throws. A failure is that of the
/// storage, a `false` or nothing, and one diagnostic line: "Keychain ", what was tried (讀取, 新增, 更新, 刪除), "失敗
/// [", the account, "]: " and the system's reason. Holds no state of its own; every call blocks as long as the storage
/// does, on any thread.
class KeychainStore
{
public:
    /// The service under which the program keeps its keys.
    static QString apiKeyService();

    /// The storage must outlive the store.
    KeychainStore(SecretStorage &storage, QString service, DiagnosticLine diagnostics);

    /// The account's value, byte for byte; nothing where there is none (no failure) or where it can't be read.
    std::optional<QString> readString(const QString &account) const;
    /// The same for callers that mustn't take a value that can't be read for one that isn't there.
    Result<std::optional<QString>> read(const QString &account) const;

    /// All values of the service by account, by one search. Empty after a failed search, whose line names the service
    /// in the account's place; a value that isn't UTF-8 is left out with its own line.
    QHash<QString, QString> readAllStrings() const;
    Result<QHash<QString, QString>> readAll() const;

    /// True when the keychain now holds exactly this value, or, for an empty one, nothing under the account.
    bool saveString(const QString &value, const QString &account) const;
    Result<void> save(const QString &value, const QString &account) const;

    /// True when nothing remains under the account.
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
