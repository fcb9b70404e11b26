#pragma once

#include <chrono>
#include <deque>

namespace lucentra {

/// How often text may be sent to a service while the screen is followed: once a second, and a number of times a minute;
/// half as often while power is saved.
class RequestLimit
{
public:
    using Time = std::chrono::milliseconds;

    void set(int perMinute, bool savesPower);
    /// The earliest time of the next request.
    Time next(Time now) const;
    /// Counts a request.
    void count(Time now);

private:
    int m_perMinute = 30;
    Time m_interval{1000};
    std::deque<Time> m_requests; ///< the last ones, at most those of a minute
};

} // namespace lucentra
