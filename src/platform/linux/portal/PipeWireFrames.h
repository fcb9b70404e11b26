#pragma once

#include <QImage>
#include <QRectF>

#include <chrono>
#include <memory>

namespace lucentra {

/// The frames of one PipeWire video stream. A frame arrives only when something on the screen has changed. Blocking
/// calls, on one thread.
class PipeWireFrames
{
public:
    using Clock = std::chrono::steady_clock; ///< the clock of the frames' time stamps

    /// Connects to a stream and takes the descriptor of the connection over.
    PipeWireFrames(int descriptor, quint32 node);
    ~PipeWireFrames();

    enum class Wait { Arrived, TimedOut, Broken };

    /// Waits for a frame that shows the screen after a time. It is kept until the next wait.
    Wait waitForFrame(Clock::time_point after, std::chrono::milliseconds patience);

    /// The size of the newest frame in pixels.
    QSize size() const;
    /// A copy of a part of the newest frame, in its pixels.
    QImage part(const QRect &pixels) const;
    /// Ends the waiting. Any thread.
    void cancel();

private:
    class Stream;
    std::unique_ptr<Stream> m_stream;
};

} // namespace lucentra
