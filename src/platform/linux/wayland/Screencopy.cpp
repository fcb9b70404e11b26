#include "Screencopy.h"

#include "SharedBuffer.h"

#include <wlr-screencopy-unstable-v1-client.h>

#include <utility>

namespace lucentra {

namespace {

/// Longest wait for an answer of the compositor, in milliseconds. It answers within a frame unless its output is off.
constexpr int answerPatience = 1000;

} // namespace

Screencopy::Screencopy(wl_display *display)
    : m_queue(display)
{
}

Screencopy::~Screencopy()
{
    if (m_frame)
        zwlr_screencopy_frame_v1_destroy(m_frame);
}

void Screencopy::start(wl_output *output, const QRect &area)
{
    static const zwlr_screencopy_frame_v1_listener listener{
        .buffer =
            [](void *data, zwlr_screencopy_frame_v1 *, uint32_t format, uint32_t width, uint32_t height,
               uint32_t stride) {
                auto &self = *static_cast<Screencopy *>(data);
                self.m_format = format;
                self.m_size = {int(width), int(height)};
                self.m_stride = int(stride);
            },
        .flags =
            [](void *data, zwlr_screencopy_frame_v1 *, uint32_t flags) {
                static_cast<Screencopy *>(data)->m_isUpsideDown = flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT;
            },
        .ready = [](void *data, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t,
                    uint32_t) { static_cast<Screencopy *>(data)->m_isReady = true; },
        .failed = [](void *data,
                     zwlr_screencopy_frame_v1 *) { static_cast<Screencopy *>(data)->m_hasFailed = true; },
        .damage = [](void *, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t, uint32_t, uint32_t) {},
        .linux_dmabuf = [](void *, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t, uint32_t) {},
        .buffer_done = [](void *, zwlr_screencopy_frame_v1 *) {},
    };
    if (m_frame)
        zwlr_screencopy_frame_v1_destroy(m_frame);
    m_size = {};
    m_isReady = m_hasFailed = m_isUpsideDown = false;
    m_frame = zwlr_screencopy_manager_v1_capture_output_region(m_queue.globals().screencopy, 0, output, area.x(),
                                                               area.y(), area.width(), area.height());
    zwlr_screencopy_frame_v1_add_listener(m_frame, &listener, this);
    m_queue.flush();
}

bool Screencopy::prepare()
{
    if (!m_queue.waitUntil([this] { return m_hasFailed || !m_size.isEmpty(); }, answerPatience) || m_hasFailed)
        return false;
    m_buffer = std::make_unique<SharedBuffer>(m_queue.globals().shm, m_size, m_stride, m_format);
    return m_buffer->get();
}

void Screencopy::copy()
{
    zwlr_screencopy_frame_v1_copy(m_frame, m_buffer->get());
    m_queue.flush();
}

QImage Screencopy::wait()
{
    const bool hasPicture =
        m_queue.waitUntil([this] { return m_isReady || m_hasFailed; }, answerPatience) && m_isReady;
    const QImage picture = hasPicture ? m_buffer->picture() : QImage();
    zwlr_screencopy_frame_v1_destroy(std::exchange(m_frame, nullptr));
    m_buffer.reset();
    m_queue.flush();
    return m_isUpsideDown ? picture.mirrored() : picture;
}

} // namespace lucentra
