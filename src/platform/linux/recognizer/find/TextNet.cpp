#include "find/TextNet.h"

#include "find/NetLayers.h"

#include <algorithm>
#include <barrier>
#include <cmath>
#include <stdexcept>
#include <thread>

namespace lucentra {
namespace {

constexpr int grid = 32;        // pixels; the coarsest step
constexpr int leastWidth = 256; // the kernels' tiles need some columns at the coarsest step
constexpr int margin = 96;      // pixels around a tile that it is seen with
constexpr QSize largestTile(1280, 832);

/// 1 / (1 + e^-x), as 0 to 255.
std::uint8_t sureness(float x)
{
    static const auto table = [] {
        std::array<std::uint8_t, 1024> values{};
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = std::uint8_t(std::lround(255 / (1 + std::exp(8 - double(i) / 64))));
        return values;
    }();
    return table[std::size_t(std::clamp((x + 8) * 64, 0.F, 1023.F))];
}

/// The parts of a length, each at most `largest`.
std::vector<std::pair<int, int>> partsOf(int length, int largest)
{
    const int count = length <= largest ? 1 : (length + largest - 2 * margin - 1) / (largest - 2 * margin);
    std::vector<std::pair<int, int>> parts;
    for (int i = 0; i < count; ++i) {
        // On even eighths, so that the coarse maps of the parts meet.
        const auto edge = [&](int k) { return k == count ? length : length * k / count / grid * grid; };
        parts.emplace_back(edge(i), edge(i + 1));
    }
    return parts;
}

void fill(NumberPlane &plane, const QImage &image, const QRect &tile, int first, int end)
{
    constexpr float share = 1 / 255.F;
    for (int y = first; y < end; ++y) {
        const auto *row =
            reinterpret_cast<const QRgb *>(image.constScanLine(std::min(tile.top() + y, image.height() - 1)));
        float *numbers = plane.at(0, y);
        for (int x = 0; x < plane.width(); ++x, numbers += plane.channels()) {
            const QRgb pixel = row[std::min(tile.left() + x, image.width() - 1)];
            numbers[0] = float(qRed(pixel)) * share - 0.5F;
            numbers[1] = float(qGreen(pixel)) * share - 0.5F;
            numbers[2] = float(qBlue(pixel)) * share - 0.5F;
        }
    }
}

/// Adds a plane that is half as large, each of its pixels to four.
void addDoubled(const NumberPlane &small, NumberPlane &sum, int first, int end)
{
    for (int y = first; y < end; ++y) {
        for (int x = 0; x < sum.width(); ++x) {
            const float *from = small.at(x / 2, y / 2);
            float *to = sum.at(x, y);
            for (int i = 0; i < sum.channels(); ++i)
                to[i] += from[i];
        }
    }
}

} // namespace

/// What the threads do in turn, each with its share of the rows: a convolution, or (without one) the addition of a
/// plane that is half as large.
struct TextNet::Step
{
    const Convolution *convolution;
    const NumberPlane *in;
    NumberPlane *out;
};

TextNet::TextNet(const QString &path)
    : m_layers(netLayers(path))
{
    for (const char *name : {"stem", "d4", "b4", "d8", "b8",     "d16", "b16", "d32", "b32", "c32", "l16",
                             "u16",  "l8", "u8", "s8", "script", "l4",  "u4",  "l2",  "u2",  "out"}) {
        if (!m_layers.contains(name))
            throw std::runtime_error("these weights aren't those of the line finder");
    }
}

const Convolution &TextNet::layer(const char *name) const
{
    return m_layers.find(name)->second;
}

/// The net as steps over the planes of `m_planes`, which get their sizes. The picture is in the plane "image".
std::vector<TextNet::Step> TextNet::stepsFor(const QSize &size)
{
    m_planes["image"].resize(size.width(), size.height(), 4);
    std::vector<Step> steps;
    const auto convolve = [&](const char *name, const char *from) {
        const Convolution &convolution = layer(name);
        const NumberPlane &in = m_planes.find(from)->second;
        NumberPlane &out = m_planes[name];
        out.resize(in.width() / convolution.stride, in.height() / convolution.stride, convolution.storedOutputs());
        steps.push_back({&convolution, &in, &out});
    };
    const auto addUp = [&](const char *from, const char *to) {
        steps.push_back({nullptr, &m_planes[from], &m_planes[to]});
    };
    const char *last = "image";
    for (const char *name : {"stem", "d4", "b4", "d8", "b8", "d16", "b16", "d32", "b32", "c32"}) {
        convolve(name, last);
        last = name;
    }
    convolve("l16", "c32");
    addUp("l16", "b16");
    convolve("u16", "b16");
    convolve("l8", "u16");
    addUp("l8", "b8");
    convolve("u8", "b8");
    convolve("s8", "u8");
    convolve("script", "s8");
    convolve("l4", "u8");
    addUp("l4", "b4");
    convolve("u4", "b4");
    convolve("l2", "u4");
    addUp("l2", "stem");
    convolve("u2", "stem");
    convolve("out", "u2");
    return steps;
}

void TextNet::seeTile(const QImage &image, const QRect &tile, const QRect &kept, int threads, TextMaps &maps)
{
    const auto whole = [](int length) { return (length + grid - 1) / grid * grid; };
    const QSize size(std::max(leastWidth, whole(tile.width())), whole(tile.height()));
    const std::vector<Step> steps = stepsFor(size);
    std::barrier together(threads);
    const auto work = [&](int thread) {
        const auto share = [&](int height, int part) { return height * part / threads; };
        NumberPlane &picture = m_planes["image"];
        fill(picture, image, tile, share(picture.height(), thread), share(picture.height(), thread + 1));
        for (const Step &step : steps) {
            together.arrive_and_wait();
            const int first = share(step.out->height(), thread);
            const int end = share(step.out->height(), thread + 1);
            if (step.convolution)
                step.convolution->run(*step.in, *step.out, first, end);
            else
                addDoubled(*step.in, *step.out, first, end);
        }
        together.arrive_and_wait();
        const int top = kept.top() / 8;
        const int rows = kept.bottom() / 8 - top + 1;
        keep(tile, kept, top + share(rows, thread), top + share(rows, thread + 1), maps);
    };
    std::vector<std::jthread> others;
    for (int i = 1; i < threads; ++i)
        others.emplace_back(work, i);
    work(0);
}

/// Takes the part of the net's output over that belongs to some rows at an eighth of the size.
void TextNet::keep(const QRect &tile, const QRect &kept, int first, int end, TextMaps &maps) const
{
    const NumberPlane &out = m_planes.find("out")->second;
    for (int y = 4 * first; y < std::min(4 * end, (kept.bottom() + 2) / 2); ++y) {
        std::uint8_t *core = maps.core.row(y);
        std::uint8_t *upper = maps.ink.row(2 * y);
        std::uint8_t *lower = 2 * y + 1 < maps.ink.height ? maps.ink.row(2 * y + 1) : upper;
        for (int x = kept.left() / 2; x <= kept.right() / 2; ++x) {
            const float *numbers = out.at(x - tile.left() / 2, y - tile.top() / 2);
            const int right = std::min(2 * x + 1, maps.ink.width - 1);
            lower[right] = sureness(numbers[3]);
            lower[2 * x] = sureness(numbers[2]);
            upper[right] = sureness(numbers[1]);
            upper[2 * x] = sureness(numbers[0]);
            core[x] = sureness(numbers[4]);
        }
    }
    const NumberPlane &script = m_planes.find("script")->second;
    for (int y = first; y < end; ++y) {
        for (int x = kept.left() / 8; x <= kept.right() / 8; ++x) {
            const float *numbers = script.at(x - tile.left() / 8, y - tile.top() / 8);
            for (std::size_t i = 0; i < maps.scripts.size(); ++i)
                maps.scripts[i].row(y)[x] = sureness(numbers[i]);
        }
    }
}

TextMaps TextNet::seen(const QImage &image, int threads)
{
    if (image.isNull())
        return {};
    const std::lock_guard lock(m_mutex);
    const auto scaled = [&](int factor) {
        return SureMap((image.width() + factor - 1) / factor, (image.height() + factor - 1) / factor);
    };
    TextMaps maps{scaled(1), scaled(2), {scaled(8), scaled(8), scaled(8), scaled(8)}};
    for (const auto &[top, bottom] : partsOf(image.height(), largestTile.height())) {
        for (const auto &[left, right] : partsOf(image.width(), largestTile.width())) {
            const QRect kept(left, top, right - left, bottom - top);
            const QRect tile = kept.adjusted(-margin, -margin, margin, margin) & image.rect();
            seeTile(image, tile, kept, threads, maps);
        }
    }
    if (image.width() > largestTile.width() || image.height() > largestTile.height())
        m_planes.clear(); // reading a large image takes much memory as well
    return maps;
}

void TextNet::release()
{
    const std::lock_guard lock(m_mutex);
    m_planes.clear();
}

} // namespace lucentra
