#pragma once

#include <QDBusConnection>
#include <QString>

namespace lucentra {

/// Shows a notification of the desktop. Does nothing if the desktop has no notification service. Never waits.
void showDesktopNotice(const QDBusConnection &bus, const QString &title, const QString &text);

} // namespace lucentra
