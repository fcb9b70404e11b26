#include "PipeWireFrames.h"

#include <pipewire/pipewire.h>
#include <spa/param/buffers.h>
#include <spa/param/video/format-utils.h>
#include <spa/pod/builder.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

#include <unistd.h>

namespace lucentra {

namespace {

/// Larger than any monitor, in pixels per side.
constexpr uint32_t greatestSide = 1 << 15;

bool isPlausible(const spa_rectangle &size)
{
    return size.width > 0 && size.width <= greatestSide && size.height > 0 && size.height <= greatestSide;
}

std::optional<QImage::Format> imageFormat(spa_video_format format)
{
    switch (format) {
    case SPA_VIDEO_FORMAT_BGRx:
    case SPA_VIDEO_FORMAT_BGRA: // a monitor is opaque
        return QImage::Format_RGB32;
    case SPA_VIDEO_FORMAT_RGBx:
    case SPA_VIDEO_FORMAT_RGBA:
        return QImage::Format_RGBX8888;
    default:
        return std::nullopt;
    }
}

/// An object of the library's serialized form, from the arguments that its builder takes.
template <typename... Properties>
const spa_pod *objectOf(spa_pod_builder &builder, uint32_t type, uint32_t id, Properties... properties)
{
    spa_pod_frame frame;
    spa_pod_builder_push_object(&builder, &frame, type, id);
    spa_pod_builder_add(&builder, properties..., 0);
    return static_cast<const spa_pod *>(spa_pod_builder_pop(&builder, &frame));
}

/// The formats that are accepted, in memory rather than on the graphics card.
const spa_pod *offeredFormats(spa_pod_builder &builder)
{
    const spa_rectangle usual{1920, 1080};
    const spa_rectangle smallest{1, 1};
    const spa_rectangle largest{greatestSide, greatestSide};
    const spa_fraction onChange{0, 1};
    const spa_fraction usualRate{60, 1};
    const spa_fraction highestRate{1000, 1};
    return objectOf(
        builder, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
        SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), SPA_FORMAT_VIDEO_format,
        SPA_POD_CHOICE_ENUM_Id(5, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA,
                               SPA_VIDEO_FORMAT_RGBx, SPA_VIDEO_FORMAT_RGBA),
        SPA_FORMAT_VIDEO_size, SPA_POD_CHOICE_RANGE_Rectangle(&usual, &smallest, &largest), SPA_FORMAT_VIDEO_framerate,
        SPA_POD_Fraction(&onChange), SPA_FORMAT_VIDEO_maxFramerate,
        SPA_POD_CHOICE_RANGE_Fraction(&usualRate, &onChange, &highestRate));
}

void initializePipeWire()
{
    static std::once_flag once;
    std::call_once(once, [] { pw_init(nullptr, nullptr); });
}

} // namespace

/// The stream and its thread. Members that both threads use are guarded by the loop's lock.
class PipeWireFrames::Stream
{
public:
    Stream(int descriptor, quint32 node);
    ~Stream();
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

    /// Holds the loop's lock.
    class Lock
    {
    public:
        explicit Lock(pw_thread_loop *loop)
            : m_loop(loop)
        {
            pw_thread_loop_lock(m_loop);
        }
        ~Lock() { pw_thread_loop_unlock(m_loop); }
        Lock(const Lock &) = delete;
        Lock &operator=(const Lock &) = delete;

    private:
        pw_thread_loop *m_loop;
    };

    /// Waits for a signal of the thread. Needs the lock.
    void waitUntil(Clock::time_point deadline)
    {
        const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(deadline - Clock::now());
        timespec end;
        pw_thread_loop_get_time(loop, &end, std::max<int64_t>(0, left.count()));
        pw_thread_loop_timed_wait_full(loop, &end);
    }

    pw_thread_loop *loop = nullptr;
    pw_buffer *newest = nullptr; ///< the newest frame with a picture; not given back until the next one
    Clock::time_point newestTime;
    spa_video_info_raw newestFormat{};
    bool isHeld = false; ///< the newest frame stays, whatever arrives
    bool isBroken = false;
    bool isCancelled = false;

private:
    static void stateChanged(void *self, pw_stream_state, pw_stream_state state, const char *);
    static void paramChanged(void *self, uint32_t id, const spa_pod *param);
    static void process(void *self);
    static void bufferRemoved(void *self, pw_buffer *buffer);
    bool take(pw_buffer *buffer);

    pw_context *m_context = nullptr;
    pw_core *m_core = nullptr;
    pw_stream *m_stream = nullptr;
    spa_video_info_raw m_format{}; ///< of the frames to come: it changes with the monitor's size
    spa_hook m_listener{};
};

PipeWireFrames::Stream::Stream(int descriptor, quint32 node)
{
    initializePipeWire();
    loop = pw_thread_loop_new("lucentra-capture", nullptr);
    m_context = pw_context_new(pw_thread_loop_get_loop(loop), nullptr, 0);
    pw_thread_loop_start(loop);
    const Lock lock(loop);
    m_core = m_context ? pw_context_connect_fd(m_context, descriptor, nullptr, 0) : nullptr;
    if (!m_core) {
        if (!m_context)
            close(descriptor);
        isBroken = true;
        return;
    }
    m_stream = pw_stream_new(m_core, "Lucentra",
                             pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture",
                                               PW_KEY_MEDIA_ROLE, "Screen", nullptr));
    static const pw_stream_events events{.version = PW_VERSION_STREAM_EVENTS,
                                         .state_changed = &Stream::stateChanged,
                                         .param_changed = &Stream::paramChanged,
                                         .remove_buffer = &Stream::bufferRemoved,
                                         .process = &Stream::process};
    pw_stream_add_listener(m_stream, &m_listener, &events, this);
    std::array<uint8_t, 1024> memory;
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), uint32_t(memory.size()));
    const spa_pod *offers[]{offeredFormats(builder)};
    isBroken = pw_stream_connect(m_stream, PW_DIRECTION_INPUT, node,
                                 pw_stream_flags(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS), offers, 1) < 0;
}

PipeWireFrames::Stream::~Stream()
{
    pw_thread_loop_lock(loop);
    if (newest)
        pw_stream_queue_buffer(m_stream, newest);
    if (m_stream)
        pw_stream_destroy(m_stream);
    if (m_core)
        pw_core_disconnect(m_core);
    pw_thread_loop_unlock(loop);
    pw_thread_loop_stop(loop);
    if (m_context)
        pw_context_destroy(m_context);
    pw_thread_loop_destroy(loop);
}

void PipeWireFrames::Stream::stateChanged(void *data, pw_stream_state, pw_stream_state state, const char *)
{
    auto *self = static_cast<Stream *>(data);
    if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED) {
        self->isBroken = true;
        pw_thread_loop_signal(self->loop, false);
    }
}

void PipeWireFrames::Stream::paramChanged(void *data, uint32_t id, const spa_pod *param)
{
    auto *self = static_cast<Stream *>(data);
    if (!param || id != SPA_PARAM_Format)
        return;
    if (spa_format_video_raw_parse(param, &self->m_format) < 0)
        self->m_format = {};
    std::array<uint8_t, 1024> memory;
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), uint32_t(memory.size()));
    const spa_pod *wanted[]{
        objectOf(builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
                 SPA_POD_CHOICE_RANGE_Int(4, 2, 8), SPA_PARAM_BUFFERS_dataType,
                 SPA_POD_CHOICE_FLAGS_Int((1 << SPA_DATA_MemFd) | (1 << SPA_DATA_MemPtr))),
        objectOf(builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(SPA_META_Header),
                 SPA_PARAM_META_size, SPA_POD_Int(sizeof(spa_meta_header)))};
    pw_stream_update_params(self->m_stream, wanted, 2);
}

void PipeWireFrames::Stream::bufferRemoved(void *data, pw_buffer *buffer)
{
    // All are replaced when the monitor gets another size.
    auto *self = static_cast<Stream *>(data);
    if (self->newest != buffer)
        return;
    self->newest = nullptr;
    self->isHeld = false;
}

bool PipeWireFrames::Stream::take(pw_buffer *buffer)
{
    const spa_buffer &content = *buffer->buffer;
    if (content.n_datas == 0)
        return false;
    const spa_data &data = content.datas[0];
    const auto *header =
        static_cast<spa_meta_header *>(spa_buffer_find_meta_data(&content, SPA_META_Header, sizeof(spa_meta_header)));
    const qint64 stride = data.chunk->stride;
    const bool isCorrupt = (data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED) ||
                           (header && (header->flags & SPA_META_HEADER_FLAG_CORRUPTED));
    // A frame in which only the pointer has moved has no picture.
    if (!data.data || data.chunk->size == 0 || isCorrupt || !isPlausible(m_format.size) || stride < 4 * qint64(m_format.size.width) ||
        data.chunk->offset + stride * m_format.size.height > data.maxsize)
        return false;
    if (newest)
        pw_stream_queue_buffer(m_stream, newest);
    newest = buffer;
    newestFormat = m_format;
    newestTime = header && header->pts > 0 ? Clock::time_point(std::chrono::nanoseconds(header->pts)) : Clock::now();
    return true;
}

void PipeWireFrames::Stream::process(void *data)
{
    auto *self = static_cast<Stream *>(data);
    while (pw_buffer *buffer = pw_stream_dequeue_buffer(self->m_stream)) {
        if (self->isHeld || !self->take(buffer))
            pw_stream_queue_buffer(self->m_stream, buffer);
    }
    pw_thread_loop_signal(self->loop, false);
}

PipeWireFrames::PipeWireFrames(int descriptor, quint32 node)
    : m_stream(std::make_unique<Stream>(descriptor, node))
{
}

PipeWireFrames::~PipeWireFrames() = default;

PipeWireFrames::Wait PipeWireFrames::waitForFrame(Clock::time_point after, std::chrono::milliseconds patience)
{
    Stream &stream = *m_stream;
    const Stream::Lock lock(stream.loop);
    const auto deadline = Clock::now() + patience;
    stream.isHeld = false;
    while (!stream.isBroken && !stream.isCancelled) {
        stream.isHeld = stream.newest && stream.newestTime > after;
        if (stream.isHeld)
            return Wait::Arrived;
        if (Clock::now() >= deadline)
            return Wait::TimedOut;
        stream.waitUntil(deadline);
    }
    return Wait::Broken;
}

QSize PipeWireFrames::size() const
{
    const Stream::Lock lock(m_stream->loop);
    const spa_rectangle &size = m_stream->newestFormat.size;
    return {int(size.width), int(size.height)};
}

QImage PipeWireFrames::part(const QRect &pixels) const
{
    const Stream::Lock lock(m_stream->loop);
    const spa_rectangle &size = m_stream->newestFormat.size;
    const auto format = imageFormat(m_stream->newestFormat.format);
    if (!m_stream->newest || !format)
        return {};
    const spa_data &data = m_stream->newest->buffer->datas[0];
    const QImage frame(static_cast<const uchar *>(data.data) + data.chunk->offset, int(size.width), int(size.height),
                       data.chunk->stride, *format);
    return frame.copy(pixels & frame.rect()).convertToFormat(QImage::Format_RGB32);
}

void PipeWireFrames::cancel()
{
    const Stream::Lock lock(m_stream->loop);
    m_stream->isCancelled = true;
    pw_thread_loop_signal(m_stream->loop, false);
}

} // namespace lucentra
