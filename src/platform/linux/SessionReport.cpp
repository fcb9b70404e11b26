#include "SessionReport.h"

#include "DesktopShortcuts.h"
#include "LayerDesktop.h"
#include "MakeDesktop.h"
#include "PortalScreenCapture.h"
#include "StatusNotifierHost.h"
#include "X11Connection.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <optional>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Localized = std::function<QString(const QString &key)>;

QString environment(const char *name)
{
    const QString value = qEnvironmentVariable(name);
    return value.isEmpty() ? u"-"_s : value;
}

/// The facts about the X server.
struct XSession
{
    QString windowManager = u"-"_s;
    bool isComposited = false;
};

std::optional<XSession> xSession()
{
    int number = 0;
    const X11Connection connection(xcb_connect(nullptr, &number));
    if (!connection || xcb_connection_has_error(connection.get()))
        return std::nullopt;
    xcb_connection_t *const x = connection.get();
    const auto property = [x](xcb_window_t window, const char *name, xcb_atom_t type) {
        constexpr quint32 mostWords = 64;
        return x11Ask(x, xcb_get_property, xcb_get_property_reply, false, window, x11Atom(x, name), type, 0, mostWords);
    };
    XSession session;
    const xcb_screen_t *const screen = x11Screen(x, number);
    const auto check = x11PropertyValues(property(screen->root, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW).get());
    if (!check.empty()) {
        const auto name = property(check.front(), "_NET_WM_NAME", x11Atom(x, "UTF8_STRING"));
        if (name && name->format == 8 && name->value_len > 0)
            session.windowManager = QString::fromUtf8(static_cast<const char *>(xcb_get_property_value(name.get())),
                                                      qsizetype(name->value_len));
    }
    const QByteArray selection = "_NET_WM_CM_S" + QByteArray::number(number);
    const auto owner =
        x11Ask(x, xcb_get_selection_owner, xcb_get_selection_owner_reply, x11Atom(x, selection.constData()));
    session.isComposited = owner && owner->owner != XCB_WINDOW_NONE;
    return session;
}

/// What a part of the desktop's portal answers when it is asked for the version of an interface.
QDBusMessage askedVersion(const QDBusConnection &bus, const QString &service, const QString &interface)
{
    constexpr int mostMilliseconds = 2000; // the portal may have to be started
    QDBusMessage call = QDBusMessage::createMethodCall(service, u"/org/freedesktop/portal/desktop"_s,
                                                       u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call.setArguments({interface, u"version"_s});
    return bus.call(call, QDBus::Block, mostMilliseconds);
}

/// The version of one of the portal's interfaces; 0 if the desktop doesn't have it.
uint portalVersion(const QDBusConnection &bus, const QString &interface)
{
    const QVariant version =
        askedVersion(bus, u"org.freedesktop.portal.Desktop"_s, u"org.freedesktop.portal."_s + interface)
            .arguments()
            .value(0);
    return version.value<QDBusVariant>().variant().toUInt();
}

/// A version for the report: "version 4", or "-".
QString versionText(const QString &name, uint version)
{
    return version > 0 ? name + u' ' + QString::number(version) : name + u" -"_s;
}

ReportedFact captureFact(bool isLayer, bool isWayland, const QDBusConnection &bus, const Localized &localized)
{
    ReportedFact fact{.label = localized(u"擷取畫面"_s), .value = u"XComposite"_s};
    if (isLayer) {
        fact.value = u"zwlr_screencopy_manager_v1 / org.kde.KWin.ScreenShot2"_s;
        if (layerPaneOffer() != LayerPaneOffer::PaneAndCapture)
            fact.advice = localized(u"合成器不允許擷取畫面。請安裝套件，而不是直接從原始碼執行。"_s);
    } else if (isWayland) {
        const uint version = portalVersion(bus, u"ScreenCast"_s);
        fact.value = versionText(u"org.freedesktop.portal.ScreenCast"_s, version);
        if (version == 0)
            fact.advice = missingSharingText(localized);
    }
    return fact;
}

ReportedFact hotkeysFact(bool isWayland, const QDBusConnection &bus, const Localized &localized)
{
    ReportedFact fact{.label = localized(u"快速鍵"_s), .value = u"X11"_s};
    if (!isWayland)
        return fact;
    const bool isGnome = areDesktopShortcutsOffered();
    const bool isPortalUsed =
        !isGnome || askedVersion(bus, gnomePortal, gnomePortalShortcuts).type() == QDBusMessage::ReplyMessage;
    const uint version = isPortalUsed ? portalVersion(bus, u"GlobalShortcuts"_s) : 0;
    const bool hasPlasma =
        !isGnome && bus.isConnected() && bus.interface()->isServiceRegistered(u"org.kde.kglobalaccel"_s);
    fact.value = version == 0 && hasPlasma ? u"org.kde.KGlobalAccel"_s
                                           : versionText(u"org.freedesktop.portal.GlobalShortcuts"_s, version);
    if (version == 0 && !hasPlasma)
        fact.advice = localized(u"請在桌面的設定中，為指令 lucentra toggle 與 lucentra translate 設定快速鍵。"_s);
    return fact;
}

} // namespace

QList<ReportedFact> sessionReport(const Localized &localized)
{
    const auto missing = prepareDesktop(); // as the program with its pane does
    const bool isWayland = isWaylandSession();
    const bool isLayer = qgetenv("QT_QPA_PLATFORM").startsWith("wayland");
    const QByteArray forced = qgetenv("LUCENTRA_PLATFORM");
    const auto x = xSession();
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const auto yesOrNo = [&localized](bool isTrue) { return localized(isTrue ? u"是"_s : u"否"_s); };

    QList<ReportedFact> facts{
        {localized(u"桌面"_s), environment("XDG_CURRENT_DESKTOP") + u", "_s + environment("XDG_SESSION_TYPE")}};
    ReportedFact pane{.label = localized(u"翻譯板"_s)};
    if (missing)
        pane.value = u"-"_s;
    else if (isLayer)
        pane.value = localized(u"Wayland 的圖層；合成器支援"_s);
    else if (isWayland)
        pane.value = localized(u"X11 視窗（XWayland）；合成器不支援圖層"_s);
    else
        pane.value = localized(u"X11 視窗"_s);
    if (!forced.isEmpty())
        pane.value += u", LUCENTRA_PLATFORM="_s + QString::fromLocal8Bit(forced);
    if (missing)
        pane.advice = localized(*missing);
    else if (!isLayer && !x)
        pane.advice = localized(u"無法連線到 X 伺服器（DISPLAY）。"_s);
    facts.append(pane);
    if (x) {
        facts.append({localized(u"視窗管理員"_s), x->windowManager});
        ReportedFact compositing{.label = localized(u"合成器"_s), .value = yesOrNo(x->isComposited || isWayland)};
        if (!x->isComposited && !isWayland)
            compositing.advice = localized(u"沒有合成器，翻譯板無法透明。請啟動一個，例如 picom。"_s);
        facts.append(compositing);
    }
    ReportedFact busFact{.label = u"D-Bus"_s, .value = yesOrNo(bus.isConnected())};
    if (!bus.isConnected()) {
        busFact.advice =
            localized(u"沒有工作階段匯流排：快速鍵指令、鑰匙圈與狀態圖示都無法使用。請從桌面的工作階段啟動。"_s);
        facts.append(busFact);
        return facts;
    }
    facts.append(captureFact(isLayer, isWayland, bus, localized));
    facts.append(hotkeysFact(isWayland, bus, localized));
    facts.append({localized(u"狀態圖示"_s), yesOrNo(hasStatusNotifierHost(bus))});
    return facts;
}

} // namespace lucentra
