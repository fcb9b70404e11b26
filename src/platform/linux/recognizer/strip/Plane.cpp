#include "strip/Plane.h"

#include <leptonica/allheaders.h>

#include <algorithm>
#include <cmath>

namespace lucentra {
namespace {

/// The source pixels that make a target pixel, and their shares.
struct Taps
{
    int first;
    std::vector<float> shares;
};

/// Cubic convolution, which keeps thin strokes apart better than straight interpolation does; widened where it shrinks.
std::vector<Taps> tapsFor(int target, double scale)
{
    constexpr double sharpness = -0.75;
    const double stretch = std::max(1.0, 1 / scale);
    std::vector<Taps> result;
    for (int i = 0; i < target; ++i) {
        const double centre = (i + 0.5) / scale - 0.5;
        Taps taps{int(std::floor(centre - 2 * stretch)) + 1, {}};
        float sum = 0;
        for (int k = taps.first; k < centre + 2 * stretch; ++k) {
            const double d = std::abs(k - centre) / stretch;
            const double near = ((sharpness + 2) * d - (sharpness + 3)) * d * d + 1;
            const double far = sharpness * (((d - 5) * d + 8) * d - 4);
            taps.shares.push_back(float(d < 1 ? near : far));
            sum += taps.shares.back();
        }
        for (float &share : taps.shares)
            share /= sum;
        result.push_back(std::move(taps));
    }
    return result;
}

} // namespace

Plane resized(const Plane &source, const QPointF &scale)
{
    Plane wide(std::max(1, int(std::lround(source.width * scale.x()))), source.height);
    const std::vector<Taps> columns = tapsFor(wide.width, scale.x());
    for (int y = 0; y < wide.height; ++y) {
        for (int x = 0; x < wide.width; ++x) {
            const Taps &taps = columns[std::size_t(x)];
            float sum = 0;
            for (std::size_t k = 0; k < taps.shares.size(); ++k)
                sum += taps.shares[k] * source.row(y)[std::clamp(taps.first + int(k), 0, source.width - 1)];
            wide.row(y)[x] = sum;
        }
    }
    Plane result(wide.width, std::max(1, int(std::lround(source.height * scale.y()))));
    const std::vector<Taps> rows = tapsFor(result.height, scale.y());
    for (int y = 0; y < result.height; ++y) {
        const Taps &taps = rows[std::size_t(y)];
        float *out = result.row(y);
        for (std::size_t k = 0; k < taps.shares.size(); ++k) {
            const float *in = wide.row(std::clamp(taps.first + int(k), 0, wide.height - 1));
            for (int x = 0; x < result.width; ++x)
                out[x] += taps.shares[k] * in[x];
        }
    }
    return result;
}

Strip greyOf(const Plane &coverage)
{
    Strip grey(pixCreate(coverage.width, coverage.height, 8));
    for (int y = 0; y < coverage.height; ++y) {
        l_uint32 *line = pixGetData(grey.get()) + std::ptrdiff_t(y) * pixGetWpl(grey.get());
        for (int x = 0; x < coverage.width; ++x)
            SET_DATA_BYTE(line, x, l_uint8(255.5F - 255 * std::clamp(coverage.row(y)[x], 0.F, 1.F)));
    }
    return grey;
}

void keepOnly(const Strip &mask, Plane &coverage)
{
    for (int y = 0; y < coverage.height; ++y) {
        const l_uint32 *bits = pixGetData(mask.get()) + std::ptrdiff_t(y) * pixGetWpl(mask.get());
        for (int x = 0; x < coverage.width; ++x) {
            if (!GET_DATA_BIT(bits, x))
                coverage.row(y)[x] = 0;
        }
    }
}

} // namespace lucentra
