#pragma once

#include "Result.h"

#include <QImage>
#include <QString>

namespace lucentra {

class LocalizationManager;

/// The largest picture that is read, in pixels: four 8K screens. Larger ones are refused before they are decoded.
inline constexpr qint64 maximumPicturePixels = 4LL * 7680 * 4320;

/// Reads a picture file with its orientation applied, as 32 bits per pixel. The format is detected from the content:
/// PNG, JPEG, WebP, BMP, GIF, TIFF or AVIF, as far as their plug-ins are installed.
Result<QImage> readPicture(const QString &path, const LocalizationManager &texts);

/// A picture for the recognizer: transparent parts become white or black, whichever contrasts with the ink.
QImage onOpaqueGround(const QImage &picture);

/// Whether a picture could be written there; called before it is made.
Result<void> checkPictureDestination(const QString &path, const LocalizationManager &texts);

/// Writes a picture atomically, in the format of the name's suffix (PNG if it has none). Only the owner can read a new
/// file, since it shows what was on the screen.
Result<void> writePicture(const QImage &picture, const QString &path, const LocalizationManager &texts);

} // namespace lucentra
