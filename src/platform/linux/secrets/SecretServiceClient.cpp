#include "SecretServiceClient.h"

#include <QByteArrayList>
#include <QFile>

#include <array>
#include <chrono>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// Only the attributes identify an item, so that items stored by other tools are found as well.
const SecretSchema itemSchema{"com.tarnby.lucentra.Secret",
                              SECRET_SCHEMA_DONT_MATCH_NAME,
                              {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                               {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                               {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                              0,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr,
                              nullptr};

/// In the order of the problems.
constexpr std::array reasons{
    "The Secret Service does not answer"_L1,           "There is no session bus"_L1, "There is no Secret Service"_L1,
    "The Secret Service gave no value for an item"_L1, "The keyring is locked"_L1,   "There is no default keyring"_L1};

using Attributes = Owned<GHashTable, g_hash_table_unref>;

void freeItems(GList *items)
{
    g_list_free_full(items, g_object_unref);
}

using Items = Owned<GList, freeItems>;

using Value = Owned<SecretValue, secret_value_unref>;

Attributes attributesOf(const QString &service, const std::optional<QString> &account)
{
    Attributes attributes(g_hash_table_new_full(g_str_hash, g_str_equal, nullptr, g_free));
    const auto insert = [&](const char *name, const QString &value) {
        g_hash_table_insert(attributes.get(), const_cast<char *>(name), g_strdup(value.toUtf8().constData()));
    };
    insert("service", service);
    if (account)
        insert("account", *account);
    return attributes;
}

/// Whether the service isn't on the bus and can't be started.
bool isWithoutService(const GError *error)
{
    return error->domain == G_DBUS_ERROR &&
           (error->code == G_DBUS_ERROR_SERVICE_UNKNOWN || error->code == G_DBUS_ERROR_NAME_HAS_NO_OWNER ||
            error->code == G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND || error->code == G_DBUS_ERROR_SPAWN_FILE_INVALID ||
            error->code == G_DBUS_ERROR_SPAWN_EXEC_FAILED);
}

/// Takes ownership of the error.
Failure failureOf(GError *error)
{
    if (isWithoutService(error)) {
        g_error_free(error);
        return secretServiceFailure(SecretStorageProblem::NoService);
    }
    g_dbus_error_strip_remote_error(error);
    Failure failure{
        .domain = u"SecretService"_s, .code = error->code, .description = QString::fromUtf8(error->message)};
    g_error_free(error);
    return failure;
}

std::optional<QString> accountOf(SecretItem *item)
{
    const Attributes attributes(secret_item_get_attributes(item));
    const auto *account = static_cast<const char *>(g_hash_table_lookup(attributes.get(), "account"));
    return account ? std::optional(QString::fromUtf8(account)) : std::nullopt;
}

std::optional<QByteArray> secretOf(SecretItem *item)
{
    const Value value(secret_item_get_secret(item));
    if (!value)
        return std::nullopt;
    gsize size = 0;
    const char *bytes = secret_value_get(value.get(), &size);
    return QByteArray(bytes, qsizetype(size));
}

QByteArray pathOf(gpointer proxy)
{
    return g_dbus_proxy_get_object_path(static_cast<GDBusProxy *>(proxy));
}

/// Without an address GLib would start a new bus, which has no keyring.
bool hasSessionBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(QFile::decodeName(g_get_user_runtime_dir()) + u"/bus"_s);
}

/// The process's connection to the session bus, or null and an error.
GObjectPointer<GDBusConnection> sessionBus(GCancellable *cancel, GError **error)
{
    // GLib returns a closed connection as long as anybody, even its own thread, still holds it.
    for (int attempts = 20;; --attempts) {
        GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, cancel, error));
        if (!bus || attempts == 0 || !g_dbus_connection_is_closed(bus.get()))
            return bus;
        bus.reset();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

/// The unique bus name of a proxy's service; empty if it has ended.
QByteArray ownerOf(SecretService *service)
{
    const Owned<char, g_free> owner(g_dbus_proxy_get_name_owner(reinterpret_cast<GDBusProxy *>(service)));
    return owner.get();
}

} // namespace

Failure secretServiceFailure(SecretStorageProblem problem)
{
    const int index = int(problem) - int(SecretStorageProblem::NoAnswer);
    return {.domain = u"SecretService"_s, .code = int(problem), .description = reasons[size_t(index)]};
}

SecretServiceClient::SecretServiceClient(KeyringPrompt::Clock clock)
    : m_prompt(std::move(clock))
{
}

Result<QHash<QString, QByteArray>>
SecretServiceClient::search(const QString &service, const std::optional<QString> &account, GCancellable *cancel)
{
    return withSession<SearchAnswer>(cancel, [&] { return searchInSession(service, account, true, cancel); });
}

Result<void> SecretServiceClient::store(const QString &service, const QString &account, const QByteArray &secret,
                                        GCancellable *cancel)
{
    return withSession<Result<void>>(cancel, [&]() -> Result<void> {
        if (auto usable = checkDefaultKeyring(true, cancel); !usable)
            return usable;
        const Value value(secret_value_new(secret.constData(), secret.size(), "text/plain"));
        const QByteArray label = (service + u' ' + account).toUtf8();
        GError *error = nullptr;
        secret_service_store_sync(m_service.get(), &itemSchema, attributesOf(service, account).get(),
                                  SECRET_COLLECTION_DEFAULT, label.constData(), value.get(), cancel, &error);
        if (error)
            return tl::unexpected(failureOf(error));
        return {};
    });
}

Result<void> SecretServiceClient::remove(const QString &service, const QString &account, GCancellable *cancel)
{
    return withSession<Result<void>>(cancel, [&]() -> Result<void> {
        // Clearing would wait for the user if something is locked.
        if (const auto found = searchInSession(service, account, false, cancel); !found)
            return tl::unexpected(found.error());
        GError *error = nullptr;
        secret_service_clear_sync(m_service.get(), &itemSchema, attributesOf(service, account).get(), cancel, &error);
        if (error)
            return tl::unexpected(failureOf(error));
        return {};
    });
}

void SecretServiceClient::askUser(GCancellable *cancel)
{
    if (const auto request = std::exchange(m_request, std::nullopt); request && m_bus)
        m_prompt.ask(m_bus.get(), *request, cancel);
}

/// Makes the call in the existing session, and repeats it in a new one if the session or a bus that has just ended may
/// be the reason of a failure.
template <typename Answer>
Answer SecretServiceClient::withSession(GCancellable *cancel, const std::function<Answer()> &call)
{
    for (bool isSecondAttempt = false;; isSecondAttempt = true) {
        const bool isKept = m_service != nullptr;
        const auto opened = open(cancel);
        Answer answer = opened ? call() : Answer(tl::unexpected(opened.error()));
        if (answer || m_request)
            return answer;
        // GLib returns a connection until it has noticed that the other side is gone.
        const bool hasBusEnded = m_bus && g_dbus_connection_is_closed(m_bus.get());
        close();
        if (isSecondAttempt || !(isKept || hasBusEnded) || g_cancellable_is_cancelled(cancel))
            return answer;
    }
}

Result<void> SecretServiceClient::open(GCancellable *cancel)
{
    if (m_bus && g_dbus_connection_is_closed(m_bus.get())) {
        m_prompt.forget();
        close();
    }
    if (m_service && m_owner == ownerOf(m_service.get()))
        return {};
    close();
    if (!hasSessionBus())
        return tl::unexpected(secretServiceFailure(SecretStorageProblem::NoBus));
    GError *error = nullptr;
    m_bus = sessionBus(cancel, &error);
    if (!m_bus)
        return tl::unexpected(failureOf(error));
    g_dbus_connection_set_exit_on_close(m_bus.get(), FALSE); // otherwise the end of the bus would end the program
    m_service.reset(
        secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION, cancel, &error));
    if (!m_service)
        return tl::unexpected(failureOf(error));
    m_owner = ownerOf(m_service.get());
    return {};
}

void SecretServiceClient::close()
{
    m_service.reset();
    m_bus.reset();
}

SecretServiceClient::SearchAnswer SecretServiceClient::searchInSession(const QString &service,
                                                                       const std::optional<QString> &account,
                                                                       bool withSecrets, GCancellable *cancel)
{
    const int flags = SECRET_SEARCH_ALL | (withSecrets ? SECRET_SEARCH_LOAD_SECRETS : 0);
    GError *error = nullptr;
    const Items items(secret_service_search_sync(m_service.get(), &itemSchema, attributesOf(service, account).get(),
                                                 static_cast<SecretSearchFlags>(flags), cancel, &error));
    if (error)
        return tl::unexpected(failureOf(error));

    QHash<QString, QByteArray> secrets;
    QHash<QString, guint64> times;
    QHash<QString, QByteArray> locked;
    for (const GList *node = items.get(); node; node = node->next) {
        auto *item = static_cast<SecretItem *>(node->data);
        const auto itemAccount = accountOf(item);
        if (!itemAccount)
            continue;
        if (secret_item_get_locked(item)) {
            locked.insert(*itemAccount, pathOf(item));
            continue;
        }
        const auto secret = withSecrets ? secretOf(item) : QByteArray();
        if (!secret)
            return tl::unexpected(secretServiceFailure(SecretStorageProblem::NoSecret));
        const guint64 time = secret_item_get_modified(item);
        if (!secrets.contains(*itemAccount) || time > times.value(*itemAccount)) {
            secrets.insert(*itemAccount, *secret);
            times.insert(*itemAccount, time);
        }
    }
    locked.removeIf([&](const auto &item) { return withSecrets && secrets.contains(item.key()); });
    if (!locked.isEmpty())
        return tl::unexpected(needUser(SecretStorageProblem::Locked, locked.values()));
    if (!account || secrets.isEmpty()) {
        // Some services don't list the items of a locked keyring.
        if (auto usable = checkDefaultKeyring(false, cancel); !usable)
            return tl::unexpected(usable.error());
    }
    return secrets;
}

/// Fails if the default keyring is locked, or if it is missing although it must exist.
Result<void> SecretServiceClient::checkDefaultKeyring(bool mustExist, GCancellable *cancel)
{
    GError *error = nullptr;
    const GObjectPointer<SecretCollection> keyring(secret_collection_for_alias_sync(
        m_service.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, cancel, &error));
    if (error)
        return tl::unexpected(failureOf(error));
    if (!keyring && mustExist)
        return tl::unexpected(needUser(SecretStorageProblem::NoKeyring, {}));
    if (keyring && secret_collection_get_locked(keyring.get()))
        return tl::unexpected(needUser(SecretStorageProblem::Locked, {pathOf(keyring.get())}));
    return {};
}

Failure SecretServiceClient::needUser(SecretStorageProblem problem, const QByteArrayList &lockedPaths)
{
    m_request = lockedPaths;
    return secretServiceFailure(problem);
}

} // namespace lucentra
