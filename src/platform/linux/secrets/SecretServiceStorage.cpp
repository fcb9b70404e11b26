#include "SecretServiceStorage.h"

#include "DeadlineThread.h"
#include "SecretServiceClient.h"

#include <mutex>
#include <utility>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr auto callLimit = 800ms;
constexpr auto pauseAfterTimeout = 30s;

} // namespace

struct SecretServiceStorage::Worker
{
    explicit Worker(Clock ofClock)
        : clock(std::move(ofClock))
        , client(std::make_unique<SecretServiceClient>(clock))
    {
    }

    /// Calls the function with the client and the call's cancellable.
    template <typename Answer>
    Answer call(std::function<Answer(SecretServiceClient &, GCancellable *)> function)
    {
        if (isSilent())
            return tl::unexpected(secretServiceFailure(SecretStorageProblem::NoAnswer));
        const std::function<Answer(GCancellable *)> onThread = [this, function](GCancellable *cancel) {
            Answer answer = function(*client, cancel);
            if (client->hasQuestion())
                thread.post([this](GCancellable *cancelQuestion) { client->askUser(cancelQuestion); });
            return answer;
        };
        if (auto answer = thread.call(callLimit, onThread))
            return *answer;
        const std::lock_guard lock(mutex);
        silentUntil = clock() + pauseAfterTimeout;
        return tl::unexpected(secretServiceFailure(SecretStorageProblem::NoAnswer));
    }

    bool isSilent()
    {
        const std::lock_guard lock(mutex);
        return clock() < silentUntil;
    }

    const Clock clock;
    std::mutex mutex;
    std::chrono::steady_clock::time_point silentUntil; // guarded by mutex
    std::unique_ptr<SecretServiceClient> client;       // used by the thread only
    DeadlineThread thread{[this] { client.reset(); }};
};

SecretServiceStorage::SecretServiceStorage(Clock clock)
    : m_worker(std::make_unique<Worker>(std::move(clock)))
{
}

SecretServiceStorage::~SecretServiceStorage() = default;

Result<QHash<QString, QByteArray>> SecretServiceStorage::lookupAll(const QString &service)
{
    return m_worker->call<Result<QHash<QString, QByteArray>>>(
        [service](SecretServiceClient &client, GCancellable *cancel) {
            return client.search(service, std::nullopt, cancel);
        });
}

Result<std::optional<QByteArray>> SecretServiceStorage::lookup(const QString &service, const QString &account)
{
    return m_worker->call<Result<std::optional<QByteArray>>>(
        [service, account](SecretServiceClient &client, GCancellable *cancel) -> Result<std::optional<QByteArray>> {
            const auto secrets = client.search(service, account, cancel);
            if (!secrets)
                return tl::unexpected(secrets.error());
            const auto found = secrets->constFind(account);
            return found == secrets->cend() ? std::nullopt : std::optional(found.value());
        });
}

Result<void> SecretServiceStorage::store(const QString &service, const QString &account, const QByteArray &secret)
{
    return m_worker->call<Result<void>>([service, account, secret](SecretServiceClient &client, GCancellable *cancel) {
        return client.store(service, account, secret, cancel);
    });
}

Result<void> SecretServiceStorage::remove(const QString &service, const QString &account)
{
    return m_worker->call<Result<void>>([service, account](SecretServiceClient &client, GCancellable *cancel) {
        return client.remove(service, account, cancel);
    });
}

} // namespace lucentra
