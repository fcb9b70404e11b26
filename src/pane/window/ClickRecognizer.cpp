#include "ClickRecognizer.h"

#include <cmath>

namespace lucentra {

namespace {

double distance(QPointF a, QPointF b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

} // namespace

void ClickRecognizer::press(QPointF pointer, QPointF windowOrigin, std::chrono::milliseconds time, PairLimits limits)
{
    const bool completesPair = m_previous && m_previous->count == 1 && time - m_previous->time <= limits.interval &&
                               distance(pointer, m_previous->pointer) <= limits.distance;
    m_current = Press{pointer, windowOrigin, time, completesPair ? 2 : 1};
    m_previous.reset();
}

std::optional<QPointF> ClickRecognizer::move(QPointF pointer)
{
    if (!m_current || distance(pointer, m_current->pointer) < pointerTravel)
        return std::nullopt;
    const QPointF start = m_current->pointer;
    cancel();
    return start;
}

std::optional<int> ClickRecognizer::release(QPointF pointer, QPointF windowOrigin)
{
    if (!m_current)
        return std::nullopt;
    const Press press = *m_current;
    cancel();
    if (distance(pointer, press.pointer) >= pointerTravel || distance(windowOrigin, press.windowOrigin) >= windowTravel)
        return std::nullopt;
    m_previous = press;
    return press.count;
}

void ClickRecognizer::cancel()
{
    m_current.reset();
    m_previous.reset();
}

} // namespace lucentra
