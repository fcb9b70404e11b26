#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace lucentra {

/// The texts, numbers and booleans at the top of a property list, an XML or a binary one; empty where it is malformed
/// or its top is no dictionary. Values of other kinds are left out: no setting has one.
///
/// A list that is deeper or would become larger in memory than preferences ever are is refused before it is read, so
/// that a hostile file of some kilobytes costs neither time nor memory.
QJsonObject readPropertyList(const QByteArray &content);

} // namespace lucentra
