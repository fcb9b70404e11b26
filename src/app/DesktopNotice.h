#pragma once

#include <QDBusConnection>
#include <QString>

namespace lucentra {

/// Has the desktop show a short notice outside of the program's own windows. Where nobody shows notices nothing
/// happens; never waits.
void showDesktopNotice(const QDBusConnection &bus, const QString &title, const QString &text);

} // namespace lucentra
