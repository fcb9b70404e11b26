#pragma once

#include "SecretStorage.h"

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// The desktop's Secret Service (GNOME Keyring, KWallet, KeePassXC and others) through libsecret.
///
/// Items have the attributes "service" and "account" and are in the default keyring. Calls run one after the other on a
/// thread of the storage and take at most 0.8 seconds, waiting included. A call that takes longer is cancelled, and
/// for the next 30 seconds every call fails at once. A locked keyring is a failure, never an empty answer; the user is
/// then asked to unlock it (see `KeyringPrompt`), and calls succeed after that. Secrets are stored nowhere else.
class SecretServiceStorage : public SecretStorage
{
public:
    /// The clock of these 30 seconds, for tests.
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    explicit SecretServiceStorage(Clock clock = &std::chrono::steady_clock::now);
    ~SecretServiceStorage() override;

    Result<QHash<QString, QByteArray>> lookupAll(const QString &service) override;
    Result<std::optional<QByteArray>> lookup(const QString &service, const QString &account) override;
    Result<void> store(const QString &service, const QString &account, const QByteArray &secret) override;
    Result<void> remove(const QString &service, const QString &account) override;

private:
    struct Worker;

    const std::unique_ptr<Worker> m_worker;
};

} // namespace lucentra
