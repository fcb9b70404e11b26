#pragma once

#include <QImage>
#include <QSize>

#include <cstddef>

struct wl_buffer;
struct wl_shm;

namespace lucentra {

/// Memory of a picture that is shared with the compositor; all zero, thus transparent, at first.
class SharedBuffer
{
public:
    /// `format` is one of wl_shm's. Check `get`.
    SharedBuffer(wl_shm *shm, QSize size, int stride, quint32 format);
    ~SharedBuffer();
    SharedBuffer(const SharedBuffer &) = delete;
    SharedBuffer &operator=(const SharedBuffer &) = delete;

    /// Null if there is no memory for it.
    wl_buffer *get() const { return m_buffer; }
    QSize size() const { return m_size; }
    /// A copy of the picture; null if the format is unknown.
    QImage picture() const;

private:
    QSize m_size;
    int m_stride;
    quint32 m_format;
    std::size_t m_length;
    void *m_memory;
    wl_buffer *m_buffer = nullptr;
};

} // namespace lucentra
