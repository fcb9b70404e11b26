#include "SharedBuffer.h"

#include <limits>

#include <wayland-client.h>

#include <sys/mman.h>
#include <unistd.h>

namespace lucentra {

namespace {

QImage::Format pictureFormat(quint32 format)
{
    switch (format) {
    case WL_SHM_FORMAT_ARGB8888:
    case WL_SHM_FORMAT_XRGB8888:
        return QImage::Format_RGB32;
    case WL_SHM_FORMAT_ABGR8888:
    case WL_SHM_FORMAT_XBGR8888:
        return QImage::Format_RGBX8888;
    case WL_SHM_FORMAT_BGR888:
        return QImage::Format_RGB888;
    case WL_SHM_FORMAT_RGB888:
        return QImage::Format_BGR888;
    case WL_SHM_FORMAT_ARGB2101010:
    case WL_SHM_FORMAT_XRGB2101010:
        return QImage::Format_RGB30;
    case WL_SHM_FORMAT_ABGR2101010:
    case WL_SHM_FORMAT_XBGR2101010:
        return QImage::Format_BGR30;
    default:
        return QImage::Format_Invalid;
    }
}

} // namespace

SharedBuffer::SharedBuffer(wl_shm *shm, QSize size, int stride, quint32 format)
    : m_size(size)
    , m_stride(stride)
    , m_format(format)
    , m_length(std::size_t(stride) * std::size_t(size.height()))
    , m_memory(MAP_FAILED)
{
    constexpr std::size_t greatestLength = std::numeric_limits<int32_t>::max(); // of the protocol
    if (stride <= 0 || m_length > greatestLength)
        return;
    const int file = memfd_create("lucentra-picture", MFD_CLOEXEC);
    if (file < 0)
        return;
    if (ftruncate(file, off_t(m_length)) == 0)
        m_memory = mmap(nullptr, m_length, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (m_memory != MAP_FAILED) {
        wl_shm_pool *pool = wl_shm_create_pool(shm, file, int32_t(m_length));
        m_buffer = wl_shm_pool_create_buffer(pool, 0, size.width(), size.height(), stride, format);
        wl_shm_pool_destroy(pool);
    }
    close(file);
}

SharedBuffer::~SharedBuffer()
{
    if (m_buffer)
        wl_buffer_destroy(m_buffer);
    if (m_memory != MAP_FAILED)
        munmap(m_memory, m_length);
}

QImage SharedBuffer::picture() const
{
    const QImage::Format format = pictureFormat(m_format);
    if (!m_buffer || format == QImage::Format_Invalid)
        return {};
    // Converted even if the format is the same: the memory goes away with the buffer.
    return QImage(static_cast<const uchar *>(m_memory), m_size.width(), m_size.height(), m_stride, format)
        .convertToFormat(QImage::Format_RGB32)
        .copy();
}

} // namespace lucentra
