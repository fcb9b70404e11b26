#include "DesktopHotkeys.h"

#include "DesktopShortcuts.h"
#include "SessionBus.h"
#include "VirtualKeys.h"

#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QKeySequence>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

/// A shortcut as the portal takes and returns it.
struct PortalShortcut
{
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

namespace {

const auto shortcutsPortal = u"org.freedesktop.portal.Desktop"_s;
const auto shortcutsPath = u"/org/freedesktop/portal/desktop"_s;
const auto shortcutsInterface = u"org.freedesktop.portal.GlobalShortcuts"_s;

const auto plasmaService = u"org.kde.kglobalaccel"_s;
const auto plasmaPath = u"/kglobalaccel"_s;
const auto plasmaInterface = u"org.kde.KGlobalAccel"_s;
const auto plasmaComponentInterface = u"org.kde.kglobalaccel.Component"_s;

const auto busService = u"org.freedesktop.DBus"_s;
const auto propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

/// Must be the same at each start, since some desktops store the user's keys under it.
const auto ownComponent = u"lucentra"_s;

// The last part of a request's path identifies it.
const auto createRequest = u"lucentra_create"_s;
const auto bindRequest = u"lucentra_bind"_s;

struct ActionRow
{
    HotkeyAction action;
    QStringView id;
    QStringView titleKey;
};

constexpr std::array actionRows{
    ActionRow{HotkeyAction::TogglePane, u"toggle", u"顯示/隱藏 翻譯板"},
    ActionRow{HotkeyAction::TranslateArea, u"translate", u"翻譯目前區域"},
};

/// Empty for signs, whose names in the portal are words.
QString portalTrigger(quint32 keyCode, quint32 modifiers)
{
    const QString trigger =
        modifierNames(modifiers).toUpper().replace(u"META"_s, u"LOGO"_s) + portalKeyName(americanKeyLabel(keyCode));
    const QChar last = trigger.isEmpty() ? QChar() : trigger.back();
    if (!last.isLetterOrNumber())
        return {};
    const bool isCharacter = trigger.size() == 1 || trigger[trigger.size() - 2] == u'+';
    return isCharacter ? trigger.chopped(1) + last.toLower() : trigger;
}

QList<int> toolkitKeys(quint32 keyCode, quint32 modifiers)
{
    const QKeySequence keys(modifierNames(modifiers) + toolkitKeyName(americanKeyLabel(keyCode)),
                            QKeySequence::PortableText);
    return keys.isEmpty() ? QList<int>() : QList<int>{keys[0].toCombined()};
}

QString description(const QList<int> &keys)
{
    QStringList texts;
    for (const int key : keys) {
        if (key)
            texts.append(QKeySequence(key).toString(QKeySequence::NativeText));
    }
    return texts.join(u", "_s);
}

std::optional<HotkeyAction> actionOf(const QString &id)
{
    const auto row =
        std::find_if(actionRows.begin(), actionRows.end(), [&](const ActionRow &each) { return each.id == id; });
    return row == actionRows.end() ? std::nullopt : std::optional(row->action);
}

} // namespace

DesktopHotkeys::DesktopHotkeys(SessionBus &bus, GlobalHotkeys *fallback,
                               std::function<QString(const QString &)> localized)
    : m_bus(bus)
    , m_fallback(fallback)
    , m_localized(std::move(localized))
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    qDBusRegisterMetaType<QList<int>>();
    connect(&m_bus, &SessionBus::returned, this, &DesktopHotkeys::ask);
    ask();
}

DesktopHotkeys::~DesktopHotkeys()
{
    if (m_service != Service::KGlobalAccel)
        return; // the portal ends with the connection
    for (const ActionRow &row : actionRows)
        call(plasmaService, plasmaPath, plasmaInterface, u"setInactive"_s,
             {QStringList{ownComponent, row.id.toString(), {}, {}}});
}

bool DesktopHotkeys::areKeysChosenHere() const
{
    return m_service == Service::None && m_fallback && m_fallback->areKeysChosenHere();
}

std::function<void()> DesktopHotkeys::keyDialog()
{
    constexpr uint versionWithDialog = 2;
    if (m_service == Service::Portal && m_portalVersion >= versionWithDialog && !m_session.isEmpty())
        return [this] {
            callPortal(u"ConfigureShortcuts"_s,
                       {QVariant::fromValue(QDBusObjectPath(m_session)), QString(), QVariantMap()});
        };
    const bool areCustom = areDesktopShortcutsOffered() && areDesktopShortcutsSet();
    return areKeysChosenHere() && !areCustom ? std::function<void()>() : shortcutSettings();
}

int DesktopHotkeys::registerHotkey(HotkeyAction action, quint32 keyCode, quint32 modifiers)
{
    if (m_service == Service::None)
        return m_fallback ? m_fallback->registerHotkey(action, keyCode, modifiers) : hotkeyStatus::invalid;
    m_wanted.insert(action, {keyCode, modifiers});
    m_registered.insert(action);
    if (size_t(m_wanted.size()) == actionRows.size())
        bind();
    return hotkeyStatus::registered;
}

void DesktopHotkeys::unregisterHotkeys()
{
    m_registered.clear();
    if (m_fallback)
        m_fallback->unregisterHotkeys();
}

void DesktopHotkeys::setPressedHandler(std::function<void(HotkeyAction)> pressed)
{
    m_pressed = std::move(pressed);
    if (m_fallback)
        m_fallback->setPressedHandler(m_pressed);
}

void DesktopHotkeys::call(const QString &service, const QString &path, const QString &interface, const QString &method,
                          const QVariantList &arguments, std::function<void(const QDBusMessage &)> returned)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    if (!returned) {
        m_bus.connection().send(message);
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(m_bus.connection().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [watcher, round = m_round, this, returned = std::move(returned)] {
                watcher->deleteLater();
                if (round == m_round)
                    returned(watcher->reply());
            });
}

void DesktopHotkeys::ask()
{
    use(Service::None); // the service of the previous bus
    m_watcher = std::make_unique<QDBusServiceWatcher>(shortcutsPortal, m_bus.connection(),
                                                      QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher->addWatchedService(plasmaService);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this, &DesktopHotkeys::ownerChanged);
    askPortal();
}

void DesktopHotkeys::ownerChanged(const QString &service, const QString &, const QString &newOwner)
{
    const bool isPortal = service == shortcutsPortal;
    if (!newOwner.isEmpty() && m_service != Service::Portal)
        askPortal();
    else if (newOwner.isEmpty() && m_service == (isPortal ? Service::Portal : Service::KGlobalAccel))
        use(Service::None); // until it is back: a portal that crashes isn't started again and again
}

void DesktopHotkeys::askVersion(const QString &service, const QString &interface,
                                std::function<void(const QDBusMessage &)> returned)
{
    call(service, shortcutsPath, propertiesInterface, u"Get"_s, {interface, u"version"_s}, std::move(returned));
}

void DesktopHotkeys::askPortal()
{
    ++m_round;
    registerWithPortal(m_bus.connection()); // again if the portal was restarted
    askVersion(shortcutsPortal, shortcutsInterface, [this](const QDBusMessage &reply) {
        m_portalVersion = reply.type() == QDBusMessage::ReplyMessage
                              ? reply.arguments().value(0).value<QDBusVariant>().variant().toUInt()
                              : 0;
        if (areDesktopShortcutsOffered())
            askVersion(gnomePortal, gnomePortalShortcuts, [this](const QDBusMessage &own) {
                const bool isThere = own.type() == QDBusMessage::ReplyMessage && m_portalVersion > 0;
                use(isThere ? Service::Portal : Service::None);
            });
        else if (m_portalVersion > 0)
            use(Service::Portal);
        else
            askPlasma();
    });
}

void DesktopHotkeys::askPlasma()
{
    // Other desktops must not start the service, which gets no keys there.
    call(busService, u"/org/freedesktop/DBus"_s, busService, u"NameHasOwner"_s, {plasmaService},
         [this](const QDBusMessage &reply) {
             const bool isThere = reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toBool();
             use(isThere ? Service::KGlobalAccel : Service::None);
         });
}

void DesktopHotkeys::use(Service service)
{
    m_isBound = false;
    m_session.clear();
    m_descriptions.clear();
    m_wanted.clear();
    QDBusConnection bus = m_bus.connection();
    if (service == Service::Portal) {
        bus.connect(shortcutsPortal, QString(), u"org.freedesktop.portal.Request"_s, u"Response"_s, this,
                    SLOT(answered(uint, QVariantMap, QDBusMessage)));
        bus.connect(shortcutsPortal, shortcutsPath, shortcutsInterface, u"Activated"_s, this,
                    SLOT(activated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
        bus.connect(shortcutsPortal, shortcutsPath, shortcutsInterface, u"ShortcutsChanged"_s, this,
                    SLOT(shortcutsChanged(QDBusMessage)));
    } else if (service == Service::KGlobalAccel) {
        bus.connect(plasmaService, QString(), plasmaComponentInterface, u"globalShortcutPressed"_s, this,
                    SLOT(keyPressed(QString, QString, qlonglong)));
        bus.connect(plasmaService, plasmaPath, plasmaInterface, u"yourShortcutGotChanged"_s, this,
                    SLOT(keysChanged(QStringList, QList<int>)));
    }
    if (std::exchange(m_service, service) == Service::None && service == Service::None)
        return;
    m_changed();
}

void DesktopHotkeys::bind()
{
    if (std::exchange(m_isBound, true))
        return; // the desktop knows these shortcuts, and only the user changes them
    if (m_service == Service::Portal)
        callPortal(u"CreateSession"_s, {QVariantMap{{u"handle_token"_s, createRequest},
                                                    {u"session_handle_token"_s, ownComponent},
                                                    // Plasma 5.27 accepts keys only here.
                                                    {u"shortcuts"_s, shortcutsForPortal()}}});
    else
        bindInPlasma();
}

void DesktopHotkeys::callPortal(const QString &method, const QVariantList &arguments)
{
    call(shortcutsPortal, shortcutsPath, shortcutsInterface, method, arguments);
}

QVariant DesktopHotkeys::shortcutsForPortal() const
{
    QList<PortalShortcut> shortcuts;
    for (const ActionRow &row : actionRows) {
        PortalShortcut shortcut{row.id.toString(), {{u"description"_s, m_localized(row.titleKey.toString())}}};
        const Keys keys = m_wanted.value(row.action);
        if (const QString trigger = portalTrigger(keys.keyCode, keys.modifiers); !trigger.isEmpty())
            shortcut.properties.insert(u"preferred_trigger"_s, trigger);
        shortcuts.append(shortcut);
    }
    return QVariant::fromValue(shortcuts);
}

void DesktopHotkeys::answered(uint code, const QVariantMap &results, const QDBusMessage &message)
{
    if (m_service != Service::Portal || code != 0)
        return; // refused by the user: the hotkeys do nothing
    if (message.path().endsWith(u'/' + createRequest)) {
        m_session = results.value(u"session_handle"_s).toString();
        callPortal(u"BindShortcuts"_s, {QVariant::fromValue(QDBusObjectPath(m_session)), shortcutsForPortal(),
                                        QString(), QVariantMap{{u"handle_token"_s, bindRequest}}});
    } else if (message.path().endsWith(u'/' + bindRequest)) {
        takeDescriptions(results.value(u"shortcuts"_s));
    }
}

void DesktopHotkeys::takeDescriptions(const QVariant &shortcuts)
{
    if (!shortcuts.canConvert<QDBusArgument>() || shortcuts.value<QDBusArgument>().currentSignature() != u"a(sa{sv})"_s)
        return;
    for (const PortalShortcut &shortcut : qdbus_cast<QList<PortalShortcut>>(shortcuts)) {
        if (const auto action = actionOf(shortcut.id))
            m_descriptions.insert(*action, shortcut.properties.value(u"trigger_description"_s).toString());
    }
}

void DesktopHotkeys::shortcutsChanged(const QDBusMessage &message)
{
    if (message.arguments().size() == 2 && message.arguments()[0].value<QDBusObjectPath>().path() == m_session)
        takeDescriptions(message.arguments()[1]);
}

void DesktopHotkeys::activated(const QDBusObjectPath &session, const QString &id, qulonglong, const QVariantMap &)
{
    if (session.path() == m_session)
        press(id);
}

void DesktopHotkeys::bindInPlasma()
{
    constexpr uint isDefault = 8;
    constexpr uint isPresent = 2; // keys that the user has chosen stay
    for (const ActionRow &row : actionRows) {
        const QStringList action{ownComponent, row.id.toString(), u"Lucentra"_s, m_localized(row.titleKey.toString())};
        const Keys wanted = m_wanted.value(row.action);
        const QVariant keys = QVariant::fromValue(toolkitKeys(wanted.keyCode, wanted.modifiers));
        call(plasmaService, plasmaPath, plasmaInterface, u"doRegister"_s, {action});
        call(plasmaService, plasmaPath, plasmaInterface, u"setShortcut"_s, {action, keys, isDefault});
        call(plasmaService, plasmaPath, plasmaInterface, u"setShortcut"_s, {action, keys, isPresent},
             [this, action](const QDBusMessage &reply) {
                 if (reply.signature() == u"ai"_s)
                     keysChanged(action, qdbus_cast<QList<int>>(reply.arguments().constFirst()));
             });
    }
}

void DesktopHotkeys::keysChanged(const QStringList &action, const QList<int> &keys)
{
    if (action.value(0) != ownComponent)
        return;
    if (const auto known = actionOf(action.value(1)))
        m_descriptions.insert(*known, description(keys));
}

void DesktopHotkeys::keyPressed(const QString &pressedComponent, const QString &id, qlonglong)
{
    if (pressedComponent == ownComponent)
        press(id);
}

void DesktopHotkeys::press(const QString &id)
{
    const auto action = actionOf(id);
    if (action && m_registered.contains(*action) && m_pressed)
        m_pressed(*action);
}

} // namespace lucentra
