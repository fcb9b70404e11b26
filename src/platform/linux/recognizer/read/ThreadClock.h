#pragma once

#include <chrono>
#include <ctime>

namespace lucentra {

/// The processor time that the calling thread has worked so far.
inline std::chrono::microseconds threadTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::microseconds(std::chrono::microseconds::rep(time.tv_sec) * 1'000'000 + time.tv_nsec / 1000);
}

} // namespace lucentra
