#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lucentra {

class SecretStorage;
class SettingsStore;

/// Takes one diagnostic line, without a line break.
using DiagnosticLine = std::function<void(const QString &)>;

/// Keeps the user's API keys: one secret an account under one service. Never throws; a failure is a `false` or
/// nothing, and one diagnostic line. May be called from any thread.
class KeychainStore
{
public:
    KeychainStore(SecretStorage &storage, QString service, DiagnosticLine diagnostics);

    std::optional<QString> readString(const QString &account) const;
    /// All keys of the service by account, by one search.
    QHash<QString, QString> readAllStrings() const;
    bool saveString(const QString &value, const QString &account) const;
    bool deleteItem(const QString &account) const;

private:
    SecretStorage &m_storage;
    const QString m_service;
    const DiagnosticLine m_diagnostics;
};

} // namespace lucentra
