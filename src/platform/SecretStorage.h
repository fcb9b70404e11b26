#pragma once

#include "Result.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace lucentra {

/// Why a call failed, as `Failure::code`. Other codes are the system's own and lower.
enum class SecretStorageProblem {
    NoAnswer = 9001, ///< no answer in time
    NoBus,           ///< no session bus
    NoService,       ///< no keyring service on this computer
    NoSecret,        ///< the item has no readable value
    Locked,          ///< the keyring is locked
    NoKeyring,       ///< there is no default keyring; the user is asked to create one
};

/// The desktop's keyring: generic secrets, each identified by a service and an account.
///
/// Calls block, may be made on any thread, and end within about a second; after a time-out, calls fail at once for a
/// while. A locked keyring is a failure; the user is asked to unlock it without blocking the caller. A failure's
/// description is the system's own reason and never contains a secret.
class SecretStorage
{
public:
    virtual ~SecretStorage() = default;

    /// All secrets of a service by account.
    virtual Result<QHash<QString, QByteArray>> lookupAll(const QString &service) = 0;
    /// One secret; nullopt if the account has none.
    virtual Result<std::optional<QByteArray>> lookup(const QString &service, const QString &account) = 0;
    /// Creates the item, or replaces its value.
    virtual Result<void> store(const QString &service, const QString &account, const QByteArray &secret) = 0;
    /// Removes the item. Succeeds if it doesn't exist.
    virtual Result<void> remove(const QString &service, const QString &account) = 0;
};

} // namespace lucentra
