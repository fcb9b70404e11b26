#include "DesktopNotice.h"

#include <QDBusMessage>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace lucentra {

void showDesktopNotice(const QDBusConnection &bus, const QString &title, const QString &text)
{
    constexpr quint32 replacesNone = 0;
    constexpr int usualDuration = -1;
    QDBusMessage notify =
        QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                                       u"org.freedesktop.Notifications"_s, u"Notify"_s);
    notify.setArguments({u"Lucentra"_s, replacesNone, u"com.tarnby.lucentra"_s, title, text.toHtmlEscaped(),
                         QStringList(), QVariantMap(), usualDuration});
    bus.send(notify);
}

} // namespace lucentra
