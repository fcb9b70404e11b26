#pragma once

#include "X11Connection.h"

#include <QImage>

namespace lucentra {

/// Reads a pixmap of 32 bits per pixel from its top-left corner, by shared memory if the X server supports it. The image
/// then owns that memory. Blocks; returns a null image on failure.
QImage readX11Pixmap(xcb_connection_t *connection, xcb_pixmap_t pixmap, const QSize &size);

} // namespace lucentra
