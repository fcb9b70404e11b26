#pragma once

#include "Result.h"

#include <QImage>
#include <QString>

namespace lucentra {

class LocalizationManager;

/// The largest picture that is read, in pixels: four 8K screens. Larger ones are refused before they are decoded.
inline constexpr qint64 maximumPicturePixels = 4LL * 7680 * 4320;

/// Reads a picture file upright (its orientation mark applied), as 32 bits a pixel. The format is detected from the content:
/// PNG, JPEG, WebP, BMP, GIF, TIFF or AVIF, as far as they are installed.
Result<QImage> readPicture(const QString &path, const LocalizationManager &texts);

/// A picture for the recognizer: what is transparent lies over the ground, white or black, that its ink stands out
/// from.
QImage onOpaqueGround(const QImage &picture);

/// Whether a picture could be written there, told before it is made.
Result<void> checkPictureDestination(const QString &path, const LocalizationManager &texts);

/// Writes a picture whole or not at all, in the format of the name's ending (PNG where it names none). A new file is
/// readable by its owner only, since it shows what was on the screen.
Result<void> writePicture(const QImage &picture, const QString &path, const LocalizationManager &texts);

} // namespace lucentra
