#pragma once

#include <QSize>
#include <QString>

class QFontMetrics;

namespace lucentra {

/// The size of a text that is broken into lines of about the same length: as narrow as the number of lines within
/// `room` (width and height, in points) allows. `flags` are those of `QFontMetrics::boundingRect`.
QSize balancedSize(const QFontMetrics &metrics, const QSize &room, int flags, const QString &text);

} // namespace lucentra
