#include "KeyringPrompt.h"

#include <optional>
#include <utility>

namespace lucentra {

namespace {

using namespace std::chrono_literals;

constexpr auto pauseAfterRefusal = 30s;
constexpr int callTimeoutMilliseconds = 300; // for each of the three calls that start a prompt
constexpr auto busName = "org.freedesktop.secrets";
constexpr auto servicePath = "/org/freedesktop/secrets";
constexpr auto serviceInterface = "org.freedesktop.Secret.Service";
constexpr auto promptInterface = "org.freedesktop.Secret.Prompt";

using VariantPointer = Owned<GVariant, g_variant_unref>;

/// Returns null if the call failed.
VariantPointer callBus(GDBusConnection *bus, const char *name, const char *path, const char *interface,
                       const char *method, GVariant *arguments, GCancellable *cancel)
{
    return VariantPointer(g_dbus_connection_call_sync(bus, name, path, interface, method, arguments, nullptr,
                                                      G_DBUS_CALL_FLAGS_NO_AUTO_START, callTimeoutMilliseconds, cancel,
                                                      nullptr));
}

/// The unique bus name of the running service; empty if none runs.
QByteArray ownerOfService(GDBusConnection *bus, GCancellable *cancel)
{
    const auto answer = callBus(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                "GetNameOwner", g_variant_new("(s)", busName), cancel);
    const char *owner = nullptr;
    if (answer)
        g_variant_get(answer.get(), "(&s)", &owner);
    return owner;
}

VariantPointer requestUnlock(GDBusConnection *bus, const QByteArrayList &paths, GCancellable *cancel)
{
    GVariantBuilder objects;
    g_variant_builder_init(&objects, G_VARIANT_TYPE("ao"));
    for (const QByteArray &path : paths)
        g_variant_builder_add(&objects, "o", path.constData());
    return callBus(bus, busName, servicePath, serviceInterface, "Unlock", g_variant_new("(ao)", &objects), cancel);
}

VariantPointer requestDefaultKeyring(GDBusConnection *bus, GCancellable *cancel)
{
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Collection.Label",
                          g_variant_new_string("Default keyring"));
    return callBus(bus, busName, servicePath, serviceInterface, "CreateCollection",
                   g_variant_new("(a{sv}s)", &properties, "default"), cancel);
}

} // namespace

/// A prompt that was started, and its result.
struct KeyringPrompt::Shown
{
    Shown(GDBusConnection *ofBus, QByteArray ofOwner, const QByteArray &path, Clock clock)
        : owner(std::move(ofOwner))
        , m_bus(static_cast<GDBusConnection *>(g_object_ref(ofBus)))
        , m_clock(std::move(clock))
        , m_subscription(g_dbus_connection_signal_subscribe(ofBus, owner.constData(), promptInterface, "Completed",
                                                            path.constData(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                                                            &Shown::completed, this, nullptr))
    {
    }
    ~Shown() { g_dbus_connection_signal_unsubscribe(m_bus.get(), m_subscription); }

    const QByteArray owner;
    bool isOpen = true;
    std::optional<std::chrono::steady_clock::time_point> refusedAt;

private:
    static void completed(GDBusConnection *, const char *, const char *, const char *, const char *,
                          GVariant *parameters, gpointer shown)
    {
        auto *self = static_cast<Shown *>(shown);
        gboolean isDismissed = TRUE;
        if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(bv)")))
            g_variant_get(parameters, "(bv)", &isDismissed, nullptr);
        self->isOpen = false;
        if (isDismissed)
            self->refusedAt = self->m_clock();
    }

    const GObjectPointer<GDBusConnection> m_bus;
    const Clock m_clock;
    const guint m_subscription;
};

KeyringPrompt::KeyringPrompt(Clock clock)
    : m_clock(std::move(clock))
{
}

KeyringPrompt::~KeyringPrompt() = default;

void KeyringPrompt::ask(GDBusConnection *bus, const QByteArrayList &locked, GCancellable *cancel)
{
    const QByteArray owner = ownerOfService(bus, cancel);
    if (owner.isEmpty() || !mayAsk(owner))
        return;
    const VariantPointer answer =
        locked.isEmpty() ? requestDefaultKeyring(bus, cancel) : requestUnlock(bus, locked, cancel);
    const char *answerType = locked.isEmpty() ? "(oo)" : "(aoo)";
    if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE(answerType)))
        return;
    const char *prompt = nullptr;
    g_variant_get_child(answer.get(), 1, "&o", &prompt);
    if (qstrcmp(prompt, "/") != 0) // otherwise no prompt was necessary
        show(bus, owner, prompt, cancel);
}

void KeyringPrompt::forget()
{
    m_shown.reset();
}

bool KeyringPrompt::mayAsk(const QByteArray &owner) const
{
    if (!m_shown || m_shown->owner != owner)
        return true;
    return !m_shown->isOpen && (!m_shown->refusedAt || m_clock() - *m_shown->refusedAt >= pauseAfterRefusal);
}

void KeyringPrompt::show(GDBusConnection *bus, const QByteArray &owner, const QByteArray &path, GCancellable *cancel)
{
    m_shown = std::make_unique<Shown>(bus, owner, path, m_clock);
    const auto answer =
        callBus(bus, owner.constData(), path.constData(), promptInterface, "Prompt", g_variant_new("(s)", ""), cancel);
    if (!answer)
        m_shown.reset();
}

} // namespace lucentra
