#include "RequestLimit.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr int mostPerMinute = 60;

} // namespace

void RequestLimit::set(int perMinute, bool savesPower)
{
    m_perMinute = std::clamp(savesPower ? perMinute / 2 : perMinute, 1, mostPerMinute);
    m_interval = savesPower ? 2s : 1s;
}

RequestLimit::Time RequestLimit::next(Time now) const
{
    if (m_requests.empty())
        return now;
    Time next = std::max(now, m_requests.back() + m_interval);
    if (m_requests.size() >= size_t(m_perMinute))
        next = std::max(next, m_requests[m_requests.size() - size_t(m_perMinute)] + 1min);
    return next;
}

void RequestLimit::count(Time now)
{
    m_requests.push_back(now);
    if (m_requests.size() > mostPerMinute)
        m_requests.pop_front();
}

} // namespace lucentra
