#include "strip/LineNormalizer.h"

#include "Mask.h"
#include "Rules.h"
#include "strip/Plane.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

namespace lucentra {
namespace {

constexpr double marginShare = 0.12; // of the line's height, around it
constexpr double commonShare = 0.35; // of the rim; a rim with a commoner colour is flat

struct Rgb
{
    float red = 0;
    float green = 0;
    float blue = 0;
};

Rgb operator-(const Rgb &a, const Rgb &b)
{
    return {a.red - b.red, a.green - b.green, a.blue - b.blue};
}
Rgb operator+(const Rgb &a, const Rgb &b)
{
    return {a.red + b.red, a.green + b.green, a.blue + b.blue};
}
Rgb operator/(const Rgb &a, float divisor)
{
    return {a.red / divisor, a.green / divisor, a.blue / divisor};
}
float dot(const Rgb &a, const Rgb &b)
{
    return a.red * b.red + a.green * b.green + a.blue * b.blue;
}
float length(const Rgb &a)
{
    return std::sqrt(dot(a, a));
}
float brightness(const Rgb &a)
{
    return 0.3F * a.red + 0.59F * a.green + 0.11F * a.blue;
}

Rgb colourOf(QRgb pixel)
{
    return {float(qRed(pixel)), float(qGreen(pixel)), float(qBlue(pixel))};
}

Rgb mean(const std::vector<Rgb> &colours)
{
    const Rgb sum = std::accumulate(colours.begin(), colours.end(), Rgb{});
    return sum / float(std::max<std::size_t>(1, colours.size()));
}

/// The commonest of the colours, to 16 levels a channel, with its neighbours.
std::vector<Rgb> commonest(const std::vector<Rgb> &colours)
{
    std::array<int, 4096> counts{};
    const auto bucket = [](const Rgb &c) {
        const int place = int(c.red) / 16 * 256 + int(c.green) / 16 * 16 + int(c.blue) / 16;
        return std::size_t(place);
    };
    for (const Rgb &colour : colours)
        ++counts[bucket(colour)];
    const std::size_t most = std::size_t(std::max_element(counts.begin(), counts.end()) - counts.begin());
    std::vector<Rgb> members;
    for (const Rgb &colour : colours) {
        if (bucket(colour) == most)
            members.push_back(colour);
    }
    const Rgb centre = mean(members);
    members.clear();
    std::copy_if(colours.begin(), colours.end(), std::back_inserter(members),
                 [&](const Rgb &colour) { return length(colour - centre) < 20; });
    return members;
}

/// The value that `share` of the values don't exceed.
float percentile(std::vector<float> values, double share)
{
    const auto place = values.begin() + std::ptrdiff_t(share * double(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

std::vector<Rgb> pixelsOf(const QImage &image, const QRect &area)
{
    std::vector<Rgb> pixels;
    pixels.reserve(std::size_t(area.width()) * std::size_t(area.height()));
    for (int y = area.top(); y <= area.bottom(); ++y) {
        const QRgb *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = area.left(); x <= area.right(); ++x)
            pixels.push_back(colourOf(row[x]));
    }
    return pixels;
}

std::vector<Rgb> rimOf(const QImage &image, const QRect &area)
{
    std::vector<Rgb> rim;
    for (const QRect &side :
         {QRect(area.left(), area.top(), area.width(), 1), QRect(area.left(), area.bottom(), area.width(), 1),
          QRect(area.left(), area.top(), 1, area.height()), QRect(area.right(), area.top(), 1, area.height())}) {
        const std::vector<Rgb> pixels = pixelsOf(image, side);
        rim.insert(rim.end(), pixels.begin(), pixels.end());
    }
    return rim;
}

/// Whether many of the pixels are brighter than the paper and many are darker: letters with an outline or a shadow.
bool isOnBothSides(const std::vector<Rgb> &pixels, const Rgb &paper)
{
    constexpr float apart = 24;       // levels
    constexpr std::size_t share = 20; // one of so many pixels at least
    const float middle = brightness(paper);
    std::size_t brighter = 0;
    std::size_t darker = 0;
    for (const Rgb &pixel : pixels) {
        brighter += brightness(pixel) > middle + apart ? 1 : 0;
        darker += brightness(pixel) < middle - apart ? 1 : 0;
    }
    return std::min(brighter, darker) * share > pixels.size();
}

/// 0 on the paper, 1 where a pixel has the ink's colour, by the place on the line between the two.
std::vector<float> alongAxis(const std::vector<Rgb> &pixels, const Rgb &paper)
{
    std::vector<float> distances;
    distances.reserve(pixels.size());
    for (const Rgb &pixel : pixels)
        distances.push_back(length(pixel - paper));
    const float far = std::max(8.F, 0.8F * percentile(distances, 0.97));
    std::vector<Rgb> inks;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (distances[i] >= far)
            inks.push_back(pixels[i]);
    }
    const Rgb axis = mean(inks) - paper;
    const float scale = 1 / std::max(64.F, dot(axis, axis));
    std::vector<float> coverage;
    coverage.reserve(pixels.size());
    for (const Rgb &pixel : pixels)
        coverage.push_back(std::clamp(dot(pixel - paper, axis) * scale, 0.F, 1.F));
    return coverage;
}

/// 1 where a pixel has the colour of the brightest (or darkest) letters, 0 where it is as far from it as most are.
std::vector<float> byFill(const std::vector<Rgb> &pixels, bool isBright)
{
    std::vector<float> levels;
    levels.reserve(pixels.size());
    for (const Rgb &pixel : pixels)
        levels.push_back(isBright ? brightness(pixel) : -brightness(pixel));
    const float high = percentile(levels, 0.92);
    std::vector<Rgb> extremes;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (levels[i] >= high)
            extremes.push_back(pixels[i]);
    }
    const Rgb fill = mean(commonest(extremes));
    std::vector<float> distances;
    distances.reserve(pixels.size());
    for (const Rgb &pixel : pixels)
        distances.push_back(length(pixel - fill));
    const float far = std::max(24.F, 0.85F * percentile(distances, 0.6));
    std::vector<float> coverage;
    coverage.reserve(pixels.size());
    for (const float distance : distances)
        coverage.push_back(std::clamp((0.75F - distance / far) / 0.55F, 0.F, 1.F));
    return coverage;
}

/// In how many columns there is ink.
int inkedColumns(const Plane &coverage)
{
    int count = 0;
    for (int x = 0; x < coverage.width; ++x) {
        int y = 0;
        while (y < coverage.height && coverage.row(y)[x] < 0.5F)
            ++y;
        count += y < coverage.height ? 1 : 0;
    }
    return count;
}

/// The coverage without what has the letters' colour and reaches the rim: a bright ground that outlines keep from the
/// letters. Where there are no such outlines, so that the letters would go with the ground, everything stays.
Plane withoutRim(const Plane &original)
{
    constexpr float least = 0.4F; // soft edges go too
    const auto isInk = [&](int x, int y) { return original.row(y)[x] >= least; };
    const Strip inner(pixRemoveBorderConnComps(maskOf(original.width, original.height, isInk).get(), 4));
    Plane coverage = original;
    for (int y = 0; y < coverage.height; ++y) {
        const l_uint32 *bits = pixGetData(inner.get()) + std::ptrdiff_t(y) * pixGetWpl(inner.get());
        for (int x = 0; x < coverage.width; ++x) {
            if (isInk(x, y) && !GET_DATA_BIT(bits, x))
                coverage.row(y)[x] = 0;
        }
    }
    // Letters leave about a third of the columns empty; of .45 and .6 this lost fewer lines of drawn screens.
    return 100 * inkedColumns(coverage) >= 45 * coverage.width ? coverage : original;
}

/// Takes away what has the letters' colour in no place, such as lit windows behind white letters.
void dropFaint(Plane &coverage)
{
    constexpr float some = 0.1F;  // coverage of a soft edge
    constexpr float full = 0.75F; // and of a stroke
    const auto atLeast = [&coverage](float least) {
        return maskOf(coverage.width, coverage.height,
                      [&coverage, least](int x, int y) { return coverage.row(y)[x] >= least; });
    };
    keepOnly(Strip(pixSeedfillBinary(nullptr, atLeast(full).get(), atLeast(some).get(), 8)), coverage);
}

/// Takes away thin vertical lines of one colour that go on above or below the crop, such as a table's. Letters don't.
void dropRules(const QImage &image, const QRect &crop, Plane &coverage)
{
    constexpr float dark = 0.3F;
    constexpr float light = 0.08F; // beside a line that isn't on whole pixels
    const auto reaches = [&](int x, float least) {
        for (int y = 0; y < coverage.height; ++y) {
            if (coverage.row(y)[x] < least)
                return false;
        }
        return true;
    };
    const auto isOneColour = [&](int x, int top, int bottom) {
        constexpr float alike = 40; // levels
        const Rgb colour = colourOf(image.pixel(x, crop.center().y()));
        for (int y = std::max(0, top); y <= std::min(bottom, image.height() - 1); ++y) {
            if (length(colourOf(image.pixel(x, y)) - colour) > alike)
                return false;
        }
        return true;
    };
    const int beyond = std::max(2, crop.height() / 5);
    const int widest = std::max(2, crop.height() / 8);
    for (int left = 0; left < coverage.width; ++left) {
        int right = left;
        while (right < coverage.width && reaches(right, dark))
            ++right;
        const int middle = crop.left() + (left + right) / 2;
        if (right > left && right - left <= widest &&
            (isOneColour(middle, crop.top() - beyond, crop.bottom()) ||
             isOneColour(middle, crop.top(), crop.bottom() + beyond))) {
            const int first = left > 0 && reaches(left - 1, light) ? left - 1 : left;
            const int end = right < coverage.width && reaches(right, light) ? right + 1 : right;
            for (int y = 0; y < coverage.height; ++y)
                std::fill(coverage.row(y) + first, coverage.row(y) + end, 0.F);
        }
        left = std::max(left, right - 1);
    }
}

} // namespace

void PixDeleter::operator()(Pix *pix) const
{
    pixDestroy(&pix);
}

LineNormalizer::LineNormalizer(const QImage &image, const QRect &ink, const SureMap &seen, const QRect &room)
    : m_image(image)
    , m_seen(seen)
    , m_ink(ink)
    , m_room(room.isNull() ? image.rect() : room)
{
    const int margin = std::max(2, int(std::lround(marginShare * ink.height())));
    m_crop = ink.adjusted(-margin, -margin, margin, margin).intersected(image.rect());
    const std::vector<Rgb> rim = rimOf(image, m_crop & m_room);
    const std::vector<Rgb> common = commonest(rim);
    const Rgb paper = mean(common);
    m_paper = QColor::fromRgb(int(paper.red), int(paper.green), int(paper.blue));
    m_isVaried = double(common.size()) < commonShare * double(rim.size());
    m_isOutlined = !m_isVaried && isOnBothSides(pixelsOf(image, m_crop), paper);
}

QList<Separation> LineNormalizer::separations() const
{
    if (m_isVaried)
        return {Separation::BrightFill, Separation::Axis, Separation::Mask, Separation::DarkFill};
    if (m_isOutlined && isOn("outlined"))
        return {Separation::Axis, Separation::BrightFill, Separation::Mask, Separation::DarkFill};
    return {Separation::Axis, Separation::Mask};
}

/// A pixel's place between the colours of the paper around the letters and of the letters, where the net sees ink.
std::vector<float> LineNormalizer::maskedCoverage() const
{
    constexpr int sure = 160; // of 255
    constexpr int paper = 38;
    constexpr float least = 0.12F;
    constexpr float range = 0.3F;
    std::vector<Rgb> inks;
    std::vector<Rgb> papers;
    const std::vector<Rgb> pixels = pixelsOf(m_image, m_crop);
    std::vector<int> seen;
    seen.reserve(pixels.size());
    for (int y = m_crop.top(); y <= m_crop.bottom(); ++y)
        seen.insert(seen.end(), m_seen.row(y) + m_crop.left(), m_seen.row(y) + m_crop.right() + 1);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (seen[i] >= sure)
            inks.push_back(pixels[i]);
        else if (seen[i] < paper)
            papers.push_back(pixels[i]);
    }
    const Rgb ground = mean(papers);
    const Rgb axis = mean(inks) - ground;
    const float scale = 1 / std::max(64.F, dot(axis, axis));
    std::vector<float> coverage;
    coverage.reserve(pixels.size());
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const float place = std::clamp((dot(pixels[i] - ground, axis) * scale - 0.2F) / 0.65F, 0.F, 1.F);
        coverage.push_back(place * std::clamp((float(seen[i]) / 255 - least) / range, 0.F, 1.F));
    }
    return coverage;
}

/// Takes away what isn't near the ink that the net sees: rules, frames, icons, the row beneath.
void LineNormalizer::dropFarFromInk(Plane &coverage) const
{
    constexpr int least = 50; // of 255
    const int reach = std::max(2, m_ink.height() / 10);
    const Strip ink = maskOf(m_crop.width(), m_crop.height(),
                             [&](int x, int y) { return m_seen.row(m_crop.top() + y)[m_crop.left() + x] >= least; });
    const Strip near(pixDilateBrick(nullptr, ink.get(), 2 * reach + 1, 2 * reach + 1));
    keepOnly(near, coverage);
}

/// How far each pixel has the letters' colour, without what belongs to no letter.
Plane LineNormalizer::coverageBy(Separation separation) const
{
    const std::vector<Rgb> pixels = pixelsOf(m_image, m_crop);
    Plane coverage(m_crop.width(), m_crop.height());
    coverage.values = separation == Separation::Mask   ? maskedCoverage()
                      : separation == Separation::Axis ? alongAxis(pixels, colourOf(m_paper.rgb()))
                                                       : byFill(pixels, separation == Separation::BrightFill);
    const bool isByFill = separation == Separation::BrightFill || separation == Separation::DarkFill;
    if (isByFill && isOn("reaches the rim"))
        coverage = withoutRim(coverage);
    if (isByFill && isOn("faint"))
        dropFaint(coverage);
    if (isOn("rules of tables"))
        dropRules(m_image, m_crop, coverage);
    if (isOn("far from ink"))
        dropFarFromInk(coverage);
    for (int y = 0; y < coverage.height; ++y) {
        if (m_crop.top() + y < m_room.top() || m_crop.top() + y > m_room.bottom())
            std::fill_n(coverage.row(y), coverage.width, 0.F);
    }
    return coverage;
}

Strip LineNormalizer::strip(Separation separation, const StripShape &shape) const
{
    const Plane coverage = coverageBy(separation);
    const double scale = shape.height * shape.inkShare / m_ink.height();
    const Strip scaled = greyOf(resized(coverage, {scale * shape.widthScale, scale}));
    const int width = pixGetWidth(scaled.get());
    const int height = pixGetHeight(scaled.get());
    Strip strip(pixCreate(width + 2 * shape.padding, shape.height, 8));
    pixSetAll(strip.get());
    const int top = int(std::lround((shape.height * (1 - shape.inkShare)) / 2 - (m_ink.top() - m_crop.top()) * scale));
    pixRasterop(strip.get(), shape.padding, top, width, height, PIX_SRC, scaled.get(), 0, 0);
    return strip;
}

} // namespace lucentra
