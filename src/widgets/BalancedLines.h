#pragma once

#include <QSize>
#include <QString>

class QFontMetrics;

namespace lucentra {

/// The size of a text broken into lines of about equal length: the smallest width at which it needs no more lines than
/// in `room` (points). `flags` are those of `QFontMetrics::boundingRect`.
QSize balancedSize(const QFontMetrics &metrics, const QSize &room, int flags, const QString &text);

} // namespace lucentra
