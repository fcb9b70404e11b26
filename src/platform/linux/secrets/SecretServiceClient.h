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

/// The calls to the Secret Service, plain and blocking; every one ends soon after its cancellable is cancelled. All on
/// one thread, whose thread-default main context is iterated between the calls.
///
/// One session is kept open. A service that was restarted, or a new bus, only costs the opening of another.
class SecretServiceClient
{
public:
    explicit SecretServiceClient(KeyringPrompt::Clock clock);
    ~SecretServiceClient();
    SecretServiceClient(const SecretServiceClient &) = delete;
    SecretServiceClient &operator=(const SecretServiceClient &) = delete;

    /// The secrets of a service by account; with an account, of this one alone. Of two items with one account the
    /// newer counts. Fails rather than leave out what is locked.
    Result<QHash<QString, QByteArray>> search(const QString &service, const std::optional<QString> &account,
                                              GCancellable *cancel);
    Result<void> store(const QString &service, const QString &account, const QByteArray &secret, GCancellable *cancel);
    Result<void> remove(const QString &service, const QString &account, GCancellable *cancel);

    /// True when a call has failed since the last time for something that the user can help with.
    bool hasQuestion() const { return m_request.has_value(); }
    /// Has the user asked for it; see `KeyringPrompt::ask`.
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
    std::optional<KeyringRequest> m_request;
    GObjectPointer<GDBusConnection> m_bus;
    GObjectPointer<SecretService> m_service;
    QByteArray m_owner; ///< unique bus name of the service that the session is with
};

} // namespace lucentra
