#pragma once

#include "X11Connection.h"

#include <QImage>

#include <xcb/shm.h>

#include <cstddef>

namespace lucentra {

/// Reads pixmaps into images, by shared memory if the X server supports it. Blocking calls on a connection that the
/// caller owns; one thread at a time.
class X11PixmapReader
{
public:
    explicit X11PixmapReader(xcb_connection_t *connection);
    ~X11PixmapReader();
    X11PixmapReader(const X11PixmapReader &) = delete;
    X11PixmapReader &operator=(const X11PixmapReader &) = delete;

    /// Reads a pixmap of 32 bits per pixel from its top-left corner. Returns a null image on failure.
    QImage read(xcb_pixmap_t pixmap, const QSize &size);

private:
    void share(size_t byteCount);
    void release();

    xcb_connection_t *m_connection;
    size_t m_size = 0;
    xcb_shm_seg_t m_segment = 0;
    uchar *m_data = nullptr; ///< null if memory can't be shared
};

} // namespace lucentra
