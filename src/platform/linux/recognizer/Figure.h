#pragma once

#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace lucentra {

/// How far two colours are apart, 0 to 255: the most of any channel.
inline int distance(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

/// Which pixels of a figure have ink, by their distance from the paper's colour.
class Figure
{
public:
    Figure(const QImage &image, const QRect &box, QRgb paper)
        : m_box(box & image.rect())
        , m_ink(std::size_t(m_box.width()) * std::size_t(m_box.height()))
    {
        std::vector<int> distances;
        int farthest = 0;
        for (int y = m_box.top(); y <= m_box.bottom(); ++y) {
            for (int x = m_box.left(); x <= m_box.right(); ++x) {
                distances.push_back(distance(image.pixel(x, y), paper));
                farthest = std::max(farthest, distances.back());
            }
        }
        int red = 0;
        int green = 0;
        int blue = 0;
        int count = 0;
        for (std::size_t i = 0; i < distances.size(); ++i) {
            m_ink[i] = 2 * distances[i] > farthest;
            if (5 * distances[i] < 4 * farthest)
                continue;
            const QRgb pixel = image.pixel(m_box.left() + int(i) % width(), m_box.top() + int(i) / width());
            red += qRed(pixel);
            green += qGreen(pixel);
            blue += qBlue(pixel);
            ++count;
        }
        count = std::max(1, count);
        m_colour = qRgb(red / count, green / count, blue / count);
    }

    int width() const { return m_box.width(); }
    int height() const { return m_box.height(); }
    QRgb colour() const { return m_colour; }
    bool hasInk(int x, int y) const { return m_ink[std::size_t(y) * std::size_t(width()) + std::size_t(x)]; }

    /// The share of ink in a part of the figure, given in fractions of its box.
    double share(double left, double top, double right, double bottom) const
    {
        const int x0 = int(left * width());
        const int x1 = std::max(x0 + 1, int(std::lround(right * width())));
        const int y0 = int(top * height());
        const int y1 = std::max(y0 + 1, int(std::lround(bottom * height())));
        int count = 0;
        for (int y = y0; y < std::min(y1, height()); ++y) {
            for (int x = x0; x < std::min(x1, width()); ++x)
                count += hasInk(x, y) ? 1 : 0;
        }
        return count / double((x1 - x0) * (y1 - y0));
    }

    /// How many runs of ink a row has, and how long the first of them is.
    std::pair<int, int> runsOfRow(int y) const
    {
        return runs(width(), [&](int x) { return hasInk(x, y); });
    }
    std::pair<int, int> runsOfColumn(int x) const
    {
        return runs(height(), [&](int y) { return hasInk(x, y); });
    }

private:
    template <typename At>
    static std::pair<int, int> runs(int length, At at)
    {
        int count = 0;
        int first = 0;
        for (int i = 0; i < length; ++i) {
            count += at(i) && (i == 0 || !at(i - 1)) ? 1 : 0;
            first += at(i) && count == 1 ? 1 : 0;
        }
        return {count, first};
    }

    QRect m_box;
    std::vector<bool> m_ink;
    QRgb m_colour = 0;
};

} // namespace lucentra
