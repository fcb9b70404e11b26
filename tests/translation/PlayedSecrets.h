#pragma once

#include "SecretStorage.h"

namespace lucentra {

/// A safe in memory.
class PlayedSecrets : public SecretStorage
{
public:
    QHash<QString, QByteArray> secrets;
    int searches = 0;

    Result<QHash<QString, QByteArray>> lookupAll(const QString &) override
    {
        ++searches;
        return secrets;
    }
    Result<std::optional<QByteArray>> lookup(const QString &, const QString &account) override
    {
        return secrets.contains(account) ? std::optional(secrets[account]) : std::nullopt;
    }
    Result<void> store(const QString &, const QString &account, const QByteArray &secret) override
    {
        secrets[account] = secret;
        return {};
    }
    Result<void> remove(const QString &, const QString &account) override
    {
        secrets.remove(account);
        return {};
    }
};

} // namespace lucentra
