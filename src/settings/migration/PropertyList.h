#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace lucentra {

/// The texts, numbers and booleans of the top-level dictionary of an XML or binary property list. Values of other types
/// are left out, since no setting has one. Returns an empty map if the list is malformed or not a dictionary.
///
/// A list that is nested deeper or would take more memory than preferences ever do is rejected before it is read, so
/// that a small hostile file costs neither time nor memory.
QJsonObject readPropertyList(const QByteArray &content);

} // namespace lucentra
