#include "DesktopNotice.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QDBusMessage callOf(const QString &method)
{
    return QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                                          u"org.freedesktop.Notifications"_s, method);
}

} // namespace

void showDesktopNotice(const QDBusConnection &bus, const QString &title, const QString &text)
{
    auto *const asked = new QDBusPendingCallWatcher(bus.asyncCall(callOf(u"GetCapabilities"_s)));
    QObject::connect(asked, &QDBusPendingCallWatcher::finished, asked, [asked, bus, title, text] {
        constexpr quint32 replacesNone = 0;
        constexpr int usualDuration = -1;
        const QDBusPendingReply<QStringList> capabilities = *asked;
        const bool isMarkup = capabilities.isValid() && capabilities.value().contains(u"body-markup"_s);
        QDBusMessage notify = callOf(u"Notify"_s);
        notify.setArguments({u"Lucentra"_s, replacesNone, u"com.tarnby.lucentra"_s, title,
                             isMarkup ? text.toHtmlEscaped() : text, QStringList(), QVariantMap(), usualDuration});
        bus.send(notify);
        asked->deleteLater();
    });
}

} // namespace lucentra
