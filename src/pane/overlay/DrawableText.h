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

/// Whether this is the toolkit's substitute that draws empty boxes because no installed font covers a script. Its other
/// properties are meaningless.
bool isBoxFont(const QRawFont &font);

/// Whether a shaped text would show empty boxes.
bool hasMissingGlyphs(const QList<QGlyphRun> &runs);

/// Replaces each character that neither the font nor its fallbacks can draw by a replacement character, or removes it
/// if that can't be drawn either. Slow: call it only if `hasMissingGlyphs`.
QString withoutMissingGlyphs(const QString &text, const QFont &font);

} // namespace lucentra
