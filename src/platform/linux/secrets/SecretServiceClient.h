#pragma once

#include "GObjectPointer.h"
#include "KeyringPrompt.h"
#include "Result.h"
#include "SecretStorage.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <libsecret/secret.h>

#include <functional>
#include <optional>

namespace lucentra {

Failure secretServiceFailure(SecretStorageProblem problem);

/// Blocking calls to the Secret Service. Each returns soon after its cancellable is cancelled. All calls must be on one
/// thread, whose thread-default main context is iterated between them.
///
/// One session is kept open; a new one is opened after a restart of the service or of the bus.
class SecretServiceClient
{
public:
    explicit SecretServiceClient(KeyringPrompt::Clock clock);

    /// The secrets of a service by account, or only that of the given account. If an account has two items, the newer
    /// one counts. Fails if any of the items is locked.
    Result<QHash<QString, QByteArray>> search(const QString &service, const std::optional<QString> &account,
                                              GCancellable *cancel);
    Result<void> store(const QString &service, const QString &account, const QByteArray &secret, GCancellable *cancel);
    Result<void> remove(const QString &service, const QString &account, GCancellable *cancel);

    /// Whether a call has failed since the last prompt for a reason that the user can resolve.
    bool hasQuestion() const { return m_request.has_value(); }
    /// Asks the user to resolve it; see `KeyringPrompt::ask`.
    void askUser(GCancellable *cancel);

private:
    using SearchAnswer = Result<QHash<QString, QByteArray>>;

    template <typename Answer>
    Answer withSession(GCancellable *cancel, const std::function<Answer()> &call);
    Result<void> open(GCancellable *cancel);
    void close();
    SearchAnswer searchInSession(const QString &service, const std::optional<QString> &account, bool withSecrets,
                                 GCancellable *cancel);
    Result<void> checkDefaultKeyring(bool mustExist, GCancellable *cancel);
    Failure needUser(SecretStorageProblem problem, const QByteArrayList &lockedPaths);

    KeyringPrompt m_prompt;
    std::optional<QByteArrayList> m_request; ///< what is to be unlocked; see `KeyringPrompt::ask`
    GObjectPointer<GDBusConnection> m_bus;
    GObjectPointer<SecretService> m_service;
    QByteArray m_owner; ///< unique bus name of the service that the session is with
};

} // namespace lucentra
