#pragma once

#include "WaylandConnection.h"

#include <QImage>
#include <QRect>

#include <memory>

struct zwlr_screencopy_frame_v1;

namespace lucentra {

class SharedBuffer;

/// One picture at a time of a part of an output, as it is shown. `start` and `copy` return at once and may be called on
/// the main thread, the others wait on the thread that needs the picture.
class Screencopy
{
public:
    explicit Screencopy(wl_display *display);
    ~Screencopy();

    /// Whether the compositor takes pictures.
    bool isOffered() const { return m_queue.globals().screencopy && m_queue.globals().shm; }

    /// Waits until the compositor has handled what was sent to it. Any thread, not while a picture is taken.
    void roundtrip() { m_queue.roundtrip(); }

    /// Begins a picture; the area is in logical pixels relative to the output.
    void start(wl_output *output, const QRect &area);
    /// Waits until the compositor has described the picture, and makes room for it. Returns false if that fails.
    bool prepare();
    /// Asks for the picture, of the next frame that shows all that was committed before.
    void copy();
    /// Waits for the picture. A null image if there is none.
    QImage wait();

private:
    WaylandQueue m_queue;
    zwlr_screencopy_frame_v1 *m_frame = nullptr;
    std::unique_ptr<SharedBuffer> m_buffer;
    quint32 m_format = 0;
    QSize m_size;
    int m_stride = 0;
    bool m_isReady = false;
    bool m_hasFailed = false;
    bool m_isUpsideDown = false;
};

} // namespace lucentra
