#pragma once

class QDBusConnection;

namespace lucentra {

/// Whether something on the bus shows status items at this moment. Blocks for half a second at most.
bool hasStatusNotifierHost(const QDBusConnection &bus);

} // namespace lucentra
