#pragma once

#include <QImage>
#include <QRect>

#include <functional>

namespace lucentra {

/// Whether KWin takes pictures for this program: an installed desktop entry must ask for that. Doesn't need the
/// application object.
bool isKWinScreenshotAllowed();

/// The picture of an area (global logical pixels) in the pixels of its output, by KWin's own service on the session bus.
/// Calls `taken` as soon as the picture is taken, before it is transferred. Blocks; a null image if it fails.
QImage takeKWinScreenshot(const QRect &area, const std::function<void()> &taken);

} // namespace lucentra
