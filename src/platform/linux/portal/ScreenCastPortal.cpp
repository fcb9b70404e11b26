#include "ScreenCastPortal.h"

#include "GObjectPointer.h"

#include <QHash>

#include <gio/gunixfdlist.h>

#include <string_view>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto screenCastService = "org.freedesktop.portal.Desktop";
constexpr auto screenCastPath = "/org/freedesktop/portal/desktop";
constexpr auto screenCastInterface = "org.freedesktop.portal.ScreenCast";
constexpr auto requestInterface = "org.freedesktop.portal.Request";
constexpr auto sessionInterface = "org.freedesktop.portal.Session";

/// A share that needs no question starts sooner.
constexpr auto questionDelay = 1s;

// Values of the portal's options.
constexpr guint32 monitors = 1;
constexpr guint32 cursorHidden = 1;
constexpr guint32 persistUntilRevoked = 2;

using Variant = Owned<GVariant, g_variant_unref>;

void endSource(GSource *source)
{
    g_source_destroy(source);
    g_source_unref(source);
}

using Source = Owned<GSource, endSource>;

Variant lookUp(GVariant *dictionary, const char *key, const GVariantType *type)
{
    return Variant(g_variant_lookup_value(dictionary, key, type));
}

QList<SharedMonitor> sharedMonitors(GVariant *results)
{
    QList<SharedMonitor> shared;
    const Variant streams = lookUp(results, "streams", G_VARIANT_TYPE("a(ua{sv})"));
    for (gsize i = 0; streams && i < g_variant_n_children(streams.get()); ++i) {
        guint32 node = 0;
        GVariant *properties = nullptr;
        g_variant_get_child(streams.get(), i, "(u@a{sv})", &node, &properties);
        const Variant owner(properties);
        gint32 x = 0, y = 0, width = 0, height = 0;
        SharedMonitor monitor{.node = node};
        if (g_variant_lookup(properties, "size", "(ii)", &width, &height)) {
            g_variant_lookup(properties, "position", "(ii)", &x, &y);
            monitor.frame = monitorFrame(x, y, width, height);
        }
        shared.append(monitor);
    }
    return shared;
}

} // namespace

/// The calls of one share. Signals arrive in a context that only runs while an answer is awaited.
class ScreenCastPortal::Calls
{
public:
    struct Answer
    {
        guint32 code = 0;
        Variant results;
    };
    using Outcome = tl::expected<Answer, ScreenCastProblem>;

    Calls()
        : m_context(g_main_context_new())
        , m_cancellable(g_cancellable_new())
    {
        g_main_context_push_thread_default(m_context.get());
    }
    ~Calls()
    {
        if (m_bus && !session.isEmpty() && !m_isClosed)
            g_dbus_connection_call(m_bus.get(), screenCastService, session.constData(), sessionInterface,
                                   "Close", nullptr, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr,
                                   nullptr);
        if (m_bus) {
            g_dbus_connection_flush_sync(m_bus.get(), nullptr, nullptr); // closing drops what isn't sent yet
            g_dbus_connection_close_sync(m_bus.get(), nullptr, nullptr);
        }
        g_main_context_pop_thread_default(m_context.get());
    }

    bool connect();
    bool isOffered();
    /// Calls a method whose outcome comes later, by a signal.
    Outcome request(const char *method, GVariant *(*arguments)(const Calls &, GVariantBuilder *options),
                    std::chrono::milliseconds patience);
    int openPipeWire();
    bool hasEnded()
    {
        while (g_main_context_iteration(m_context.get(), false)) {
        }
        return m_isClosed;
    }
    void cancel() { g_cancellable_cancel(m_cancellable.get()); }

    QByteArray token;        ///< for the next start
    /// Called when a request takes so long that the desktop seems to ask the user.
    std::function<void()> seemsToAsk;
    QByteArray parentWindow; ///< of the question
    QByteArray session;      ///< its path; empty before there is one

private:
    static void receive(GDBusConnection *, const char *, const char *path, const char *, const char *signal,
                        GVariant *values, gpointer data);
    void closeRequest(const QByteArray &path);

    const Owned<GMainContext, g_main_context_unref> m_context;
    const GObjectPointer<GCancellable> m_cancellable;
    GObjectPointer<GDBusConnection> m_bus;
    QHash<QByteArray, std::shared_ptr<Answer>> m_answers; ///< by path of the request
    bool m_isClosed = false;                              ///< the share
    bool m_isServiceGone = false;
};

bool ScreenCastPortal::Calls::connect()
{
    const Owned<char, g_free> address(
        g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, m_cancellable.get(), nullptr));
    if (!address)
        return false;
    m_bus.reset(g_dbus_connection_new_for_address_sync(
        address.get(),
        GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, m_cancellable.get(), nullptr));
    if (!m_bus)
        return false;
    const auto listen = [this](const char *sender, const char *interface, const char *signal, const char *first) {
        g_dbus_connection_signal_subscribe(m_bus.get(), sender, interface, signal, nullptr, first,
                                           G_DBUS_SIGNAL_FLAGS_NONE, &Calls::receive, this, nullptr);
    };
    // As registerWithPortal does for the program's other connection.
    g_dbus_connection_call(m_bus.get(), screenCastService, screenCastPath, "org.freedesktop.host.portal.Registry", "Register",
                           g_variant_new("(sa{sv})", "com.tarnby.lucentra", nullptr), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                           nullptr, nullptr, nullptr);
    listen(screenCastService, requestInterface, "Response", nullptr);
    listen(screenCastService, sessionInterface, "Closed", nullptr);
    listen("org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", screenCastService);
    return true;
}

bool ScreenCastPortal::Calls::isOffered()
{
    GError *error = nullptr;
    const Variant version(g_dbus_connection_call_sync(
        m_bus.get(), screenCastService, screenCastPath, "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", screenCastInterface, "version"), nullptr, G_DBUS_CALL_FLAGS_NONE,
        int(std::chrono::milliseconds(stepPatience).count()), m_cancellable.get(), &error));
    const Owned<GError, g_error_free> owner(error);
    return !g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) && // no portal
           !g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS);      // one without this interface
}

void ScreenCastPortal::Calls::receive(GDBusConnection *, const char *, const char *path, const char *, const char *signal,
                                      GVariant *values, gpointer data)
{
    auto *self = static_cast<Calls *>(data);
    const std::string_view name(signal);
    if (name == "Response" && g_variant_is_of_type(values, G_VARIANT_TYPE("(ua{sv})"))) {
        const auto answer = std::make_shared<Answer>();
        GVariant *results = nullptr;
        g_variant_get(values, "(u@a{sv})", &answer->code, &results);
        answer->results.reset(results);
        self->m_answers.insert(path, answer);
    } else if (name == "Closed" && self->session == path) {
        self->m_isClosed = true;
    } else if (name == "NameOwnerChanged" && g_variant_is_of_type(values, G_VARIANT_TYPE("(sss)"))) {
        const char *owner = nullptr;
        g_variant_get_child(values, 2, "&s", &owner);
        self->m_isServiceGone = *owner == '\0';
    }
}

ScreenCastPortal::Calls::Outcome
ScreenCastPortal::Calls::request(const char *method, GVariant *(*arguments)(const Calls &, GVariantBuilder *),
                                 std::chrono::milliseconds patience)
{
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    GError *error = nullptr;
    const Variant handle(g_dbus_connection_call_sync(
        m_bus.get(), screenCastService, screenCastPath, screenCastInterface, method, arguments(*this, &options),
        G_VARIANT_TYPE("(o)"), G_DBUS_CALL_FLAGS_NONE, int(std::chrono::milliseconds(stepPatience).count()),
        m_cancellable.get(), &error));
    if (!handle) {
        const Owned<GError, g_error_free> owner(error);
        if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return tl::unexpected(ScreenCastProblem::Cancelled);
        if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
            g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY))
            return tl::unexpected(ScreenCastProblem::NoAnswer);
        return tl::unexpected(ScreenCastProblem::NoService);
    }
    const char *path = nullptr;
    g_variant_get(handle.get(), "(&o)", &path);

    const Source cancelled(g_cancellable_source_new(m_cancellable.get()));
    g_source_set_callback(cancelled.get(), G_SOURCE_FUNC(+[](GCancellable *, gpointer) -> gboolean { return false; }),
                          nullptr, nullptr);
    g_source_attach(cancelled.get(), m_context.get());
    const Source timeout(g_timeout_source_new(guint(patience.count())));
    g_source_set_callback(timeout.get(), [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
    g_source_attach(timeout.get(), m_context.get());
    const auto deadline = std::chrono::steady_clock::now() + patience;
    const Source delay(g_timeout_source_new(guint(std::chrono::milliseconds(questionDelay).count())));
    g_source_set_callback(
        delay.get(),
        [](gpointer function) -> gboolean {
            (*static_cast<std::function<void()> *>(function))();
            return G_SOURCE_REMOVE;
        },
        &seemsToAsk, nullptr);
    if (seemsToAsk)
        g_source_attach(delay.get(), m_context.get());
    while (true) {
        if (const auto answer = m_answers.take(path))
            return Answer{answer->code, std::move(answer->results)};
        if (m_isServiceGone || m_isClosed || g_dbus_connection_is_closed(m_bus.get()))
            return tl::unexpected(ScreenCastProblem::Failed);
        const bool isCancelled = g_cancellable_is_cancelled(m_cancellable.get());
        if (isCancelled || std::chrono::steady_clock::now() >= deadline) {
            closeRequest(path);
            return tl::unexpected(isCancelled ? ScreenCastProblem::Cancelled : ScreenCastProblem::NoAnswer);
        }
        g_main_context_iteration(m_context.get(), true);
    }
}

void ScreenCastPortal::Calls::closeRequest(const QByteArray &path)
{
    // Portals have crashed when a caller went away while their question was shown.
    g_dbus_connection_call(m_bus.get(), screenCastService, path.constData(), requestInterface, "Close", nullptr, nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
}

int ScreenCastPortal::Calls::openPipeWire()
{
    GUnixFDList *received = nullptr;
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    const Variant reply(g_dbus_connection_call_with_unix_fd_list_sync(
        m_bus.get(), screenCastService, screenCastPath, screenCastInterface, "OpenPipeWireRemote",
        g_variant_new("(oa{sv})", session.constData(), &options), G_VARIANT_TYPE("(h)"),
        G_DBUS_CALL_FLAGS_NONE, int(std::chrono::milliseconds(stepPatience).count()), nullptr, &received,
        m_cancellable.get(), nullptr));
    const GObjectPointer<GUnixFDList> descriptors(received);
    if (!reply || !descriptors)
        return -1;
    gint32 index = 0;
    g_variant_get(reply.get(), "(h)", &index);
    return g_unix_fd_list_get(descriptors.get(), index, nullptr);
}

ScreenCastPortal::ScreenCastPortal()
    : m_calls(std::make_unique<Calls>())
{
}

ScreenCastPortal::~ScreenCastPortal() = default;

bool ScreenCastPortal::isOffered()
{
    return m_calls->connect() && m_calls->isOffered();
}

tl::expected<ScreenCastPortal::Share, ScreenCastProblem>
ScreenCastPortal::start(const QString &token, const QString &parentWindow, std::function<void()> seemsToAsk)
{
    if (!m_calls->connect())
        return tl::unexpected(ScreenCastProblem::NoService);
    m_calls->token = token.toUtf8();
    m_calls->parentWindow = parentWindow.toUtf8();

    const auto create = [this] {
        return m_calls->request(
            "CreateSession",
            [](const Calls &, GVariantBuilder *options) {
                g_variant_builder_add(options, "{sv}", "session_handle_token", g_variant_new_string("lucentra"));
                return g_variant_new("(a{sv})", options);
            },
            stepPatience);
    };
    auto created = create();
    if (created && created->code != 0)
        created = create(); // a portal whose back end has just crashed starts it again
    if (!created)
        return tl::unexpected(created.error());
    const char *path = nullptr;
    if (created->code != 0 || !g_variant_lookup(created->results.get(), "session_handle", "&s", &path))
        return tl::unexpected(ScreenCastProblem::Failed);
    m_calls->session = path;

    const auto selected = m_calls->request(
        "SelectSources",
        [](const Calls &calls, GVariantBuilder *options) {
            g_variant_builder_add(options, "{sv}", "types", g_variant_new_uint32(monitors));
            g_variant_builder_add(options, "{sv}", "multiple", g_variant_new_boolean(false));
            g_variant_builder_add(options, "{sv}", "cursor_mode", g_variant_new_uint32(cursorHidden));
            g_variant_builder_add(options, "{sv}", "persist_mode", g_variant_new_uint32(persistUntilRevoked));
            if (!calls.token.isEmpty())
                g_variant_builder_add(options, "{sv}", "restore_token", g_variant_new_string(calls.token.constData()));
            return g_variant_new("(oa{sv})", calls.session.constData(), options);
        },
        stepPatience);
    if (!selected)
        return tl::unexpected(selected.error());
    if (selected->code != 0)
        return tl::unexpected(ScreenCastProblem::Failed);

    m_calls->seemsToAsk = std::move(seemsToAsk);
    const auto started = m_calls->request(
        "Start",
        [](const Calls &calls, GVariantBuilder *options) {
            return g_variant_new("(osa{sv})", calls.session.constData(), calls.parentWindow.constData(), options);
        },
        userPatience);
    if (!started)
        return tl::unexpected(started.error());
    constexpr guint32 refused = 1;
    if (started->code != 0)
        return tl::unexpected(started->code == refused ? ScreenCastProblem::Refused : ScreenCastProblem::Failed);
    Share share{.monitors = sharedMonitors(started->results.get())};
    if (const char *next = nullptr; g_variant_lookup(started->results.get(), "restore_token", "&s", &next))
        share.nextToken = QString::fromUtf8(next);
    if (share.monitors.isEmpty())
        return tl::unexpected(ScreenCastProblem::Failed);
    return share;
}

int ScreenCastPortal::openPipeWire()
{
    return m_calls->openPipeWire();
}

bool ScreenCastPortal::hasEnded()
{
    return m_calls->hasEnded();
}

void ScreenCastPortal::cancel()
{
    m_calls->cancel();
}

} // namespace lucentra
