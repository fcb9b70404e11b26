#pragma once

#include "SecretStorage.h"

#include <QStringList>

namespace lucentra {

using namespace Qt::StringLiterals;

/// A safe in memory.
class PlayedSecrets : public SecretStorage
{
public:
    QHash<QString, QByteArray> secrets;
    std::optional<Failure> failure; ///< of every look-up
    QStringList lookups;            ///< accounts

    Result<QHash<QString, QByteArray>> lookupAll(const QString &) override
    {
        lookups.append(u"*"_s);
        return secrets;
    }
    Result<std::optional<QByteArray>> lookup(const QString &, const QString &account) override
    {
        lookups.append(account);
        if (failure)
            return tl::unexpected(*failure);
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
