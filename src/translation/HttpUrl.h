#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace lucentra {

/// The bytes as a URL for a request. Returns nullopt if the scheme isn't http or https, the host is missing, or a
/// character isn't valid in a URL.
std::optional<QByteArray> wireUrl(const QByteArray &url);

/// Whether nobody on the network can read or change what is exchanged: https, or http to this computer.
bool isProtected(const QUrl &url);

/// Whether a request to `from` may be sent on to `to`: within the same origin (scheme, host and port) or, with
/// `mayChangeHost`, to any protected URL. A server elsewhere never sends a request on to plain http on this computer.
bool mayRedirect(const QByteArray &from, const QByteArray &to, bool mayChangeHost);

} // namespace lucentra
