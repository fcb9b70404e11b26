#include "read/ChineseVariant.h"

#include "find/NetLayers.h"

#include <leptonica/allheaders.h>

#include <algorithm>

namespace lucentra {

using namespace Qt::StringLiterals;

double simplifiedEvidence(const Strip &strip)
{
    static const auto layers = netLayers(u":/lucentra/recognizer/variant.net"_s);
    constexpr double most = 4;      // so a line doesn't decide alone if there are others
    constexpr int halved = 16;      // times; the last layer's size
    constexpr int leastWidth = 128; // pixels; the layers' kernels need some columns at that size
    if (!strip)
        return 0;
    constexpr int longest = 40; // heights of the strip; what is farther right isn't looked at
    const int height = pixGetHeight(strip.get());
    const int width = std::min(pixGetWidth(strip.get()), longest * height);
    NumberPlane in;
    in.resize(std::max((width + halved - 1) / halved * halved, leastWidth), height, 1);
    for (int y = 0; y < in.height(); ++y) {
        const l_uint32 *row = pixGetData(strip.get()) + std::ptrdiff_t(y) * pixGetWpl(strip.get());
        for (int x = 0; x < in.width(); ++x)
            *in.at(x, y) = x < width ? float(GET_DATA_BYTE(row, x)) / 255.F - 0.5F : 0.5F; // paper
    }
    for (const char *name : {"c1", "c2", "c3", "c4", "c5", "c6", "c7", "c8", "out"}) {
        const Convolution &layer = layers.at(name);
        NumberPlane out;
        out.resize(in.width() / layer.stride, in.height() / layer.stride, layer.storedOutputs());
        layer.run(in, out, 0, out.height());
        in = std::move(out);
    }
    double sum = 0;
    for (int y = 0; y < in.height(); ++y) {
        for (int x = 0; x < in.width(); ++x)
            sum += double(in.at(x, y)[0] - in.at(x, y)[1]); // for simplified and for traditional; neither is below 0
    }
    return std::clamp(sum, -most, most);
}

} // namespace lucentra
