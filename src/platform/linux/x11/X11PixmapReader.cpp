#include "X11PixmapReader.h"

#include <xcb/shm.h>

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstddef>

namespace lucentra {

namespace {

/// Returns a null image if memory can't be shared, or if there is no such pixmap.
QImage readShared(xcb_connection_t *c, xcb_pixmap_t pixmap, const QSize &size)
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(c, &xcb_shm_id);
    if (!extension || !extension->present)
        return {};
    const int id = shmget(IPC_PRIVATE, size_t(size.width()) * size_t(size.height()) * 4, IPC_CREAT | 0600);
    if (id < 0)
        return {};
    void *data = shmat(id, nullptr, 0);
    X11Reply<xcb_shm_get_image_reply_t> reply;
    if (data != reinterpret_cast<void *>(-1)) {
        const xcb_shm_seg_t segment = xcb_generate_id(c);
        xcb_shm_attach(c, segment, quint32(id), false); // if it fails, so does the next request
        reply = x11Ask(c, xcb_shm_get_image, xcb_shm_get_image_reply, pixmap, 0, 0, quint16(size.width()),
                       quint16(size.height()), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0);
        xcb_shm_detach(c, segment);
        if (!reply)
            shmdt(data);
    }
    shmctl(id, IPC_RMID, nullptr); // goes when the last side detaches, also after a crash
    if (!reply)
        return {};
    // The last copy may be deleted on any thread.
    return QImage(static_cast<uchar *>(data), size.width(), size.height(), QImage::Format_RGB32,
                  [](void *attached) { shmdt(attached); }, data);
}

} // namespace

QImage readX11Pixmap(xcb_connection_t *c, xcb_pixmap_t pixmap, const QSize &size)
{
    if (QImage image = readShared(c, pixmap, size); !image.isNull())
        return image;
    const auto reply = x11Ask(c, xcb_get_image, xcb_get_image_reply, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0,
                              quint16(size.width()), quint16(size.height()), ~0U);
    if (!reply || size_t(xcb_get_image_data_length(reply.get())) < size_t(size.width()) * size_t(size.height()) * 4)
        return {};
    return QImage(xcb_get_image_data(reply.get()), size.width(), size.height(), QImage::Format_RGB32).copy();
}

} // namespace lucentra
