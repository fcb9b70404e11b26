#include "X11PixmapReader.h"

#include <sys/ipc.h>
#include <sys/shm.h>

namespace lucentra {

X11PixmapReader::X11PixmapReader(xcb_connection_t *connection)
    : m_connection(connection)
{
}

X11PixmapReader::~X11PixmapReader()
{
    release();
}

void X11PixmapReader::release()
{
    if (!m_data)
        return;
    xcb_shm_detach(m_connection, m_segment);
    shmdt(m_data);
    m_data = nullptr;
}

void X11PixmapReader::share(size_t byteCount)
{
    release();
    m_size = byteCount;
    const int id = shmget(IPC_PRIVATE, byteCount, IPC_CREAT | 0600);
    if (id < 0)
        return;
    void *address = shmat(id, nullptr, 0);
    if (address != reinterpret_cast<void *>(-1)) {
        m_segment = xcb_generate_id(m_connection);
        const auto attached = xcb_shm_attach_checked(m_connection, m_segment, quint32(id), false);
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_connection, attached));
        if (error)
            shmdt(address);
        else
            m_data = static_cast<uchar *>(address);
    }
    shmctl(id, IPC_RMID, nullptr); // goes when the last side detaches, also after a crash
}

QImage X11PixmapReader::read(xcb_pixmap_t pixmap, const QSize &size)
{
    xcb_connection_t *c = m_connection;
    const size_t byteCount = size_t(size.width()) * size_t(size.height()) * 4;
    if (m_size < byteCount)
        share(byteCount);
    if (m_data) {
        const auto reply = x11Ask(c, xcb_shm_get_image, xcb_shm_get_image_reply, pixmap, 0, 0, quint16(size.width()),
                                  quint16(size.height()), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment, 0);
        return reply ? QImage(m_data, size.width(), size.height(), QImage::Format_RGB32).copy() : QImage();
    }
    const auto reply = x11Ask(c, xcb_get_image, xcb_get_image_reply, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0,
                              quint16(size.width()), quint16(size.height()), ~0U);
    if (!reply || size_t(xcb_get_image_data_length(reply.get())) < byteCount)
        return {};
    return QImage(xcb_get_image_data(reply.get()), size.width(), size.height(), QImage::Format_RGB32).copy();
}

} // namespace lucentra
