#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace lucentra {

/// The texts, numbers and booleans of the top-level dictionary of an XML or binary property list. Values of other types
/// are left out, since no setting has one. Returns an empty map if the list is malformed or not a dictionary.
///
/// Nested values aren't followed, so that a small hostile file costs neither time nor memory.
QJsonObject readPropertyList(const QByteArray &content);

} // namespace lucentra
