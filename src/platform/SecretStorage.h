#pragma once

#include "Result.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace lucentra {

/// Why a storage did not do what was asked, in `Failure::code`. Other codes, all of them lower, are the system's own.
enum class SecretStorageProblem {
    NoAnswer = 9001, ///< it did not answer in time
    NoBus,           ///< there is no session bus
    NoService,       ///< nothing on this computer keeps secrets
    NoSecret,        ///< an item came without its value
    Locked,          ///< the safe is locked
    NoKeyring,       ///< there is no safe to store into; the user is asked to make one
};

/// The desktop's safe for passwords: generic secrets under a service and an account.
///
/// Every call blocks, on any thread, and ends within about a second, whatever the service behind it does; after a
/// time-out, calls fail at once for a while. A locked safe asks the user to unlock it without holding the caller.
/// A failure's description is the system's own reason and never holds a secret.
class SecretStorage
{
public:
    virtual ~SecretStorage() = default;

    /// All secrets of a service by account, in one search; empty where there is none.
    virtual Result<QHash<QString, QByteArray>> lookupAll(const QString &service) = 0;
    /// One secret; nothing where the account has none.
    virtual Result<std::optional<QByteArray>> lookup(const QString &service, const QString &account) = 0;
    /// Creates the item or replaces its value.
    virtual Result<void> store(const QString &service, const QString &account, const QByteArray &secret) = 0;
    /// Removes the item; one that doesn't exist is no failure.
    virtual Result<void> remove(const QString &service, const QString &account) = 0;
};

} // namespace lucentra
