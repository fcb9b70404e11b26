#pragma once

#include <QGlyphRun>
#include <QList>
#include <QString>

class QFont;
class QRawFont;

namespace lucentra {

/// A text as it can be drawn on one line: line breaks and tabs are spaces, and surrounding spaces, control and
/// private-use characters are gone.
QString drawableText(const QString &text);

/// Whether this is no font at all, but what the toolkit draws empty boxes with where no installed font knows a script.
/// Its other properties must not be asked for.
bool isBoxFont(const QRawFont &font);

/// Whether a shaped text would show empty boxes.
bool hasMissingGlyphs(const QList<QGlyphRun> &runs);

/// The text with a replacement character for each character that neither the font nor its fallbacks can draw; they
/// are left out where that is missing, too. Slow: for texts that have missing glyphs.
QString withoutMissingGlyphs(const QString &text, const QFont &font);

} // namespace lucentra
