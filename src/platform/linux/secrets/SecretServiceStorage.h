#pragma once

#include "SecretStorage.h"

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// The desktop's Secret Service (GNOME Keyring, KWallet, KeePassXC and others) through libsecret.
///
/// An item has the attributes "service" and "account" and lies in the default keyring. The calls run on a thread of
/// the storage's own, one after the other, and hold nobody for longer than 0.8 seconds, waiting for their turn
/// included. One that takes longer is cancelled, and for 30 seconds from then on every call fails at once. A locked
/// keyring is a failure, never an empty answer; the service is then asked to have the user unlock it, once at a time
/// and not again within 30 seconds of the user's refusal, and the first call after it succeeds. Nothing is ever kept
/// anywhere else.
class SecretServiceStorage : public SecretStorage
{
public:
    /// Tests push the clock by which calls fail at once.
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
