#include "Walls.h"

#include <algorithm>

namespace lucentra {
namespace {

constexpr int bandHeight = 32; // pixels

} // namespace

void Walls::add(int x, int top, int bottom)
{
    const auto last = std::size_t(std::max(0, bottom) / bandHeight);
    if (m_bands.size() <= last)
        m_bands.resize(last + 1);
    for (std::size_t i = std::size_t(std::max(0, top) / bandHeight); i <= last; ++i) {
        std::vector<Wall> &band = m_bands[i];
        const auto place =
            std::upper_bound(band.begin(), band.end(), x, [](int at, const Wall &wall) { return at < wall.x; });
        band.insert(place, {x, top, bottom});
    }
}

bool Walls::standBetween(const QRect &a, const QRect &b) const
{
    const int left = std::min(a.right(), b.right());
    const int right = std::max(a.left(), b.left());
    const int top = std::min(a.top(), b.top());
    const int bottom = std::max(a.bottom(), b.bottom());
    const auto index = std::size_t(std::max(0, (top + bottom) / 2) / bandHeight);
    if (index >= m_bands.size())
        return false;
    const std::vector<Wall> &band = m_bands[index];
    auto wall =
        std::upper_bound(band.begin(), band.end(), left, [](int at, const Wall &other) { return at < other.x; });
    for (; wall != band.end() && wall->x < right; ++wall) {
        const int above = top - wall->top;
        const int below = wall->bottom - bottom;
        if (above >= 1 && below >= 1 && 8 * (above + below) >= bottom - top + 1)
            return true;
    }
    return false;
}

} // namespace lucentra
