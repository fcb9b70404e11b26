#include "BrightLetters.h"

#include <algorithm>
#include <cstdint>

namespace lucentra {
namespace {

constexpr int bright = 185;        // of 255: white and yellow, their soft edges too
constexpr int dark = 130;          // an outline, a shadow
constexpr int outlineReach = 2;    // pixels from the letter to where its outline is darkest
constexpr int tallest = 90;        // pixels
constexpr int widest = 160;        // pixels; more than one letter may hang together
constexpr std::size_t most = 8000; // shapes; a picture with more is noise

/// How bright each pixel is, row by row.
struct Levels
{
    int width;
    int height;
    std::vector<std::uint8_t> values;

    std::uint8_t at(int x, int y) const
    {
        return values[std::size_t(std::clamp(y, 0, height - 1)) * std::size_t(width) +
                      std::size_t(std::clamp(x, 0, width - 1))];
    }
};

Levels levelsOf(const QImage &image)
{
    Levels levels{image.width(), image.height(), {}};
    levels.values.reserve(std::size_t(levels.width) * std::size_t(levels.height));
    for (int y = 0; y < levels.height; ++y) {
        const QRgb *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < levels.width; ++x)
            levels.values.push_back(std::uint8_t((77 * qRed(row[x]) + 151 * qGreen(row[x]) + 28 * qBlue(row[x])) >> 8));
    }
    return levels;
}

/// The bright pixels that hang together with a first one, side by side.
class Spread
{
public:
    explicit Spread(const Levels &levels)
        : m_levels(levels)
        , m_isTaken(levels.values.size(), false)
    {
    }

    /// Empty where the pixel is dark or has been taken before.
    const std::vector<QPoint> &from(const QPoint &start)
    {
        m_pixels.clear();
        take(start);
        for (std::size_t i = 0; i < m_pixels.size(); ++i) {
            const QPoint at = m_pixels[i];
            take({at.x() - 1, at.y()});
            take({at.x() + 1, at.y()});
            take({at.x(), at.y() - 1});
            take({at.x(), at.y() + 1});
        }
        return m_pixels;
    }

private:
    void take(const QPoint &at)
    {
        if (at.x() < 0 || at.y() < 0 || at.x() >= m_levels.width || at.y() >= m_levels.height)
            return;
        const std::size_t place = std::size_t(at.y()) * std::size_t(m_levels.width) + std::size_t(at.x());
        if (m_isTaken[place] || m_levels.values[place] < bright)
            return;
        m_isTaken[place] = true;
        m_pixels.push_back(at);
    }

    const Levels &m_levels;
    std::vector<bool> m_isTaken;
    std::vector<QPoint> m_pixels;
};

/// The letter that the pixels make; null ink where it has no dark outline.
EdgeShape letterOf(const std::vector<QPoint> &pixels, const QRect &ink, const Levels &levels)
{
    int around = 0;
    int darkAround = 0;
    int brightest = 0;
    for (const QPoint &at : pixels) {
        brightest = std::max<int>(brightest, levels.at(at.x(), at.y()));
        for (const QPoint &step : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)}) {
            if (levels.at(at.x() + step.x(), at.y() + step.y()) >= bright)
                continue;
            ++around;
            darkAround += levels.at(at.x() + outlineReach * step.x(), at.y() + outlineReach * step.y()) <= dark ? 1 : 0;
        }
    }
    if (around == 0 || 4 * darkAround < 3 * around)
        return {};
    return {ink, around, brightest - bright + 15, false};
}

} // namespace

std::vector<EdgeShape> brightLettersIn(const QImage &image)
{
    const Levels levels = levelsOf(image);
    Spread spread(levels);
    std::vector<EdgeShape> letters;
    for (int y = 0; y < levels.height; ++y) {
        for (int x = 0; x < levels.width && letters.size() < most; ++x) {
            const std::vector<QPoint> &pixels = spread.from({x, y});
            if (pixels.size() < 4)
                continue;
            QRect ink;
            for (const QPoint &pixel : pixels)
                ink |= QRect(pixel, QSize(1, 1));
            if (ink.height() > tallest || ink.width() > widest)
                continue;
            const EdgeShape letter = letterOf(pixels, ink, levels);
            if (!letter.ink.isNull())
                letters.push_back(letter);
        }
    }
    return letters;
}

} // namespace lucentra
