#pragma once

#include "SecretStorage.h"

#include <QStringList>

#include <mutex>

namespace lucentra {

/// A safe in memory that refuses on demand and remembers what it is asked. Passes ask it from several threads at once; tests
/// set and read its members while no pass runs.
class FakeSecretStorage : public SecretStorage
{
public:
    QHash<QString, QByteArray> secrets; // of the one service that the tests use
    std::optional<Failure> lookupFailure;
    std::optional<Failure> storeFailure;
    std::optional<Failure> removeFailure;
    QStringList lookups; ///< accounts
    int searches = 0;

    Result<QHash<QString, QByteArray>> lookupAll(const QString &) override
    {
        const std::lock_guard lock(m_mutex);
        ++searches;
        if (lookupFailure)
            return tl::unexpected(*lookupFailure);
        return secrets;
    }
    Result<std::optional<QByteArray>> lookup(const QString &, const QString &account) override
    {
        const std::lock_guard lock(m_mutex);
        lookups.append(account);
        if (lookupFailure)
            return tl::unexpected(*lookupFailure);
        return secrets.contains(account) ? std::optional(secrets.value(account)) : std::nullopt;
    }
    Result<void> store(const QString &, const QString &account, const QByteArray &secret) override
    {
        const std::lock_guard lock(m_mutex);
        if (storeFailure)
            return tl::unexpected(*storeFailure);
        secrets.insert(account, secret);
        return {};
    }
    Result<void> remove(const QString &, const QString &account) override
    {
        const std::lock_guard lock(m_mutex);
        if (removeFailure)
            return tl::unexpected(*removeFailure);
        secrets.remove(account);
        return {};
    }

private:
    std::mutex m_mutex;
};

} // namespace lucentra
