#pragma once

#include "TextRecognition.h"

#include <QImage>
#include <QRegion>

#include <functional>

namespace lucentra {

/// A picture of the screen with the lines that were read in it.
struct ScreenReading
{
    QImage picture; ///< RGB32; null if nothing was read yet
    QList<TextLine> lines;
    QRegion preliminary{}; ///< where lines aren't kept if they are read again
    QRect scrolled{};      ///< where lines are that have moved since they were read; null if none has
    QRegion partial{};     ///< lines that were kept although they seem to go on; to be read whole once they rest
};

/// Reads a part of a picture (pixels). The boxes are fractions of the whole picture.
using ReadPart = std::function<QList<TextLine>(const QRect &part)>;

/// The place of a box in a picture, in whole pixels.
QRect pixelsOf(const NormBox &normBox, const QSize &size);
QList<QRect> placesOf(const QList<TextLine> &lines, const QSize &size);

/// Reads what has changed since a former reading and keeps the rest: lines whose pixels are the same, at their place or
/// moved up or down, and lines whose letters are the same while what is behind them moves. `changed` contains all that
/// differs, in pixels; it and the surroundings that a line may reach into are read. Everything is read if there is no
/// former reading of that size.
ScreenReading readAgain(const ScreenReading &former, const QImage &picture, const QRegion &changed,
                        const ReadPart &read);

/// Whether there is a text among the lines that wasn't there before.
bool hasNews(const QList<TextLine> &lines, const QList<TextLine> &former);
/// The places of the lines that only one of two readings has, in pixels.
QList<QRect> differingLines(const QList<TextLine> &former, const QList<TextLine> &now, const QSize &size);

/// Removes the lines that run past, since overlays would lag behind: those in `running`, and those in `moving`, which
/// never rests, that have moved in their row. Returns all these places. Pixels.
QRegion takeRunningLines(QList<TextLine> &lines, const QList<TextLine> &former, const QSize &size,
                         const QRegion &moving, const QRegion &running);

/// The places of new lines that end beside `written` although no line was read there. Their last words are probably
/// missing: a moving picture often hides a word from the recognizer at first. Pixels, as is `written`; whole tiles.
QRegion cutLines(const QList<TextLine> &lines, const QList<TextLine> &former, const QSize &size, const QRegion &written);

} // namespace lucentra
